// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/history/HistoryModel.h"

#include "contacts/model/NameTexts.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <array>

namespace {

/// In the order of ChangeCause::Kind.
constexpr std::array kKindTitles{QT_TRANSLATE_NOOP("HistoryModel", "Change"),
    QT_TRANSLATE_NOOP("HistoryModel", "Repair"), QT_TRANSLATE_NOOP("HistoryModel", "Edit"),
    QT_TRANSLATE_NOOP("HistoryModel", "Deletion"), QT_TRANSLATE_NOOP("HistoryModel", "Import"),
    QT_TRANSLATE_NOOP("HistoryModel", "Contact card"), QT_TRANSLATE_NOOP("HistoryModel", "Restore")};

constexpr std::array kColumnTitles{QT_TRANSLATE_NOOP("HistoryModel", "When"), QT_TRANSLATE_NOOP("HistoryModel", "What"),
    QT_TRANSLATE_NOOP("HistoryModel", "Contacts")};

struct PropertyTitle
{
    QLatin1StringView name;
    const char *title;
};

/// What RecordDifference::name may be.
constexpr auto kPropertyTitles = std::to_array<PropertyTitle>({
    {QLatin1StringView("firstName"), QT_TRANSLATE_NOOP("HistoryModel", "First name")},
    {QLatin1StringView("lastName"), QT_TRANSLATE_NOOP("HistoryModel", "Last name")},
    {QLatin1StringView("middleName"), QT_TRANSLATE_NOOP("HistoryModel", "Middle name")},
    {QLatin1StringView("phoneticFirstName"), QT_TRANSLATE_NOOP("HistoryModel", "Phonetic first name")},
    {QLatin1StringView("phoneticLastName"), QT_TRANSLATE_NOOP("HistoryModel", "Phonetic last name")},
    {QLatin1StringView("maidenName"), QT_TRANSLATE_NOOP("HistoryModel", "Maiden name")},
    {QLatin1StringView("nickname"), QT_TRANSLATE_NOOP("HistoryModel", "Nickname")},
    {QLatin1StringView("title"), QT_TRANSLATE_NOOP("HistoryModel", "Title")},
    {QLatin1StringView("suffix"), QT_TRANSLATE_NOOP("HistoryModel", "Suffix")},
    {QLatin1StringView("organization"), QT_TRANSLATE_NOOP("HistoryModel", "Company")},
    {QLatin1StringView("department"), QT_TRANSLATE_NOOP("HistoryModel", "Department")},
    {QLatin1StringView("jobTitle"), QT_TRANSLATE_NOOP("HistoryModel", "Job title")},
    {QLatin1StringView("note"), QT_TRANSLATE_NOOP("HistoryModel", "Note")},
    {QLatin1StringView("birthday"), QT_TRANSLATE_NOOP("HistoryModel", "Birthday")},
    {QLatin1StringView("flags"), QT_TRANSLATE_NOOP("HistoryModel", "Flags")},
    {QLatin1StringView("email"), QT_TRANSLATE_NOOP("HistoryModel", "E-mail")},
    {QLatin1StringView("phone"), QT_TRANSLATE_NOOP("HistoryModel", "Phone")},
    {QLatin1StringView("urls"), QT_TRANSLATE_NOOP("HistoryModel", "Web pages")},
    {QLatin1StringView("relatedNames"), QT_TRANSLATE_NOOP("HistoryModel", "Related names")},
    {QLatin1StringView("address"), QT_TRANSLATE_NOOP("HistoryModel", "Addresses")},
    {QLatin1StringView("instantMessage"), QT_TRANSLATE_NOOP("HistoryModel", "Messaging")},
    {QLatin1StringView("socialProfile"), QT_TRANSLATE_NOOP("HistoryModel", "Social profiles")},
    {QLatin1StringView("image"), QT_TRANSLATE_NOOP("HistoryModel", "Picture")},
    {QLatin1StringView("card lines"), QT_TRANSLATE_NOOP("HistoryModel", "More from the card")},
});

QString causeText(const ChangeCause &cause)
{
    const QString kind = HistoryModel::tr(kKindTitles[std::size_t(cause.kind)]);
    return cause.description.isEmpty() ? kind : kind + QStringLiteral(": ") + cause.description;
}

} // namespace

QString propertyTitle(QLatin1StringView name)
{
    const auto row = std::ranges::find(kPropertyTitles, name, &PropertyTitle::name);
    return row == kPropertyTitles.end() ? QString(name) : HistoryModel::tr(row->title);
}

QString countsText(qint64 added, qint64 changed, qint64 removed)
{
    const std::array counts{std::pair(added, HistoryModel::tr("%1 added")),
        std::pair(changed, HistoryModel::tr("%1 changed")), std::pair(removed, HistoryModel::tr("%1 removed"))};
    QStringList texts;
    for (const auto &[count, text] : counts) {
        if (count > 0)
            texts += text.arg(QLocale().toString(count));
    }
    return texts.join(QStringLiteral(", "));
}

void HistoryModel::setSteps(std::vector<ChangeSummary> steps)
{
    beginResetModel();
    m_steps = std::move(steps);
    endResetModel();
}

int HistoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_steps.size());
}

int HistoryModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant HistoryModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    const ChangeSummary &each = step(index.row());
    switch (index.column()) {
    case When:
        return QLocale().toString(each.savedAt.toLocalTime(), QLocale::ShortFormat);
    case What:
        return causeText(each.cause);
    default:
        return countsText(each.added, each.changed, each.removed);
    }
}

QVariant HistoryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return tr(kColumnTitles[std::size_t(section)]);
}

void ChangedPeopleModel::setStep(const Step &step)
{
    beginResetModel();
    m_step = step;
    endResetModel();
}

int ChangedPeopleModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_step ? 0 : int(m_step->changes.size());
}

QVariant ChangedPeopleModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    const RecordedChange &each = change(index.row());
    const PersonRecordPtr named = each.after ? each.after : each.before;
    const QString name = named ? readableName(*named) : QString();
    const QString text = !each.before    ? tr("Added: %1")
        : each.after || each.afterIsLost ? tr("Changed: %1")
                                         : tr("Removed: %1");
    return text.arg(name.isEmpty() ? each.uid : name);
}
