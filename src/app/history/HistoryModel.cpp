// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/history/HistoryModel.h"

#include "contacts/model/RecordDifferences.h"

#include "contacts/model/NameTexts.h"

#include <QCoreApplication>
#include <QLocale>

#include <array>

namespace {

/// In the order of ChangeCause::Kind.
constexpr std::array kKindTitles{QT_TRANSLATE_NOOP("HistoryModel", "Change"),
    QT_TRANSLATE_NOOP("HistoryModel", "Repair"), QT_TRANSLATE_NOOP("HistoryModel", "Edit"),
    QT_TRANSLATE_NOOP("HistoryModel", "Deletion"), QT_TRANSLATE_NOOP("HistoryModel", "Import"),
    QT_TRANSLATE_NOOP("HistoryModel", "Contact card"), QT_TRANSLATE_NOOP("HistoryModel", "Restore")};

constexpr std::array kColumnTitles{QT_TRANSLATE_NOOP("HistoryModel", "When"), QT_TRANSLATE_NOOP("HistoryModel", "What"),
    QT_TRANSLATE_NOOP("HistoryModel", "Contacts")};

QString causeText(const ChangeCause &cause)
{
    const QString kind = HistoryModel::tr(kKindTitles[std::size_t(cause.kind)]);
    return cause.description.isEmpty() ? kind : kind + QStringLiteral(": ") + cause.description;
}

} // namespace

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
