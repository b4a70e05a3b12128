// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/ConditionListModel.h"

#include "scan/Conditions.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace {

struct Explanation
{
    Condition condition;
    const char *text;
};

constexpr std::array kExplanations{
    Explanation{Condition::DuplicateContacts,
        QT_TRANSLATE_NOOP("ConditionListModel", "Several contacts have the same first and last name.")},
    Explanation{
        Condition::SingleName, QT_TRANSLATE_NOOP("ConditionListModel", "The first or the last name is missing.")},
    Explanation{Condition::InvalidChar,
        QT_TRANSLATE_NOOP("ConditionListModel",
            "A phone number or an e-mail address has characters that do not belong "
            "there.")},
    Explanation{
        Condition::DupAddress, QT_TRANSLATE_NOOP("ConditionListModel", "A contact has the same address twice.")},
    Explanation{
        Condition::DupPhone, QT_TRANSLATE_NOOP("ConditionListModel", "A contact has the same phone number twice.")},
    Explanation{
        Condition::DupEmail, QT_TRANSLATE_NOOP("ConditionListModel", "A contact has the same e-mail address twice.")},
    Explanation{Condition::EmptyNotes, QT_TRANSLATE_NOOP("ConditionListModel", "The note has nothing but blanks.")},
    Explanation{Condition::UnusualTitle,
        QT_TRANSLATE_NOOP("ConditionListModel", "The title is none of the usual ones, such as Dr or Prof.")},
    Explanation{Condition::UnusualSuffix,
        QT_TRANSLATE_NOOP("ConditionListModel", "The suffix is none of the usual ones, such as Jr or III.")},
    Explanation{Condition::SpaceInFirstName,
        QT_TRANSLATE_NOOP("ConditionListModel", "The first name has a blank in it, as if it were two names.")},
    Explanation{
        Condition::EmptyNickname, QT_TRANSLATE_NOOP("ConditionListModel", "The nickname has nothing but blanks.")},
    Explanation{Condition::BlankName, QT_TRANSLATE_NOOP("ConditionListModel", "The contact has no name at all.")},
    Explanation{Condition::ShareEmail,
        QT_TRANSLATE_NOOP("ConditionListModel", "Several contacts have the same e-mail address.")},
};
static_assert(coversConditions(kExplanations, &Explanation::condition));

} // namespace

ConditionListModel::ConditionListModel(QObject *parent)
    : QAbstractListModel(parent), m_titles(conditionTitles()), m_selected(m_titles)
{ }

int ConditionListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_titles.size());
}

QVariant ConditionListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const QString &title = m_titles[index.row()];
    if (role == Qt::DisplayRole)
        return title;
    if (role == Qt::CheckStateRole)
        return m_selected.contains(title) ? Qt::Checked : Qt::Unchecked;
    if (role == ExplanationRole)
        return tr(std::ranges::find(kExplanations, *conditionTitled(title), &Explanation::condition)->text);
    if (role == CountRole)
        return m_found.contains(title) ? m_found[title] : QVariant();
    if (role == Qt::AccessibleDescriptionRole)
        return index.data(ExplanationRole);
    return {};
}

void ConditionListModel::selectAll(bool isSelected)
{
    if (!isSelected)
        m_selected.clear();
    for (const QString &title : isSelected ? m_titles : QStringList()) {
        if (!m_selected.contains(title))
            m_selected += title;
    }
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::CheckStateRole});
}

void ConditionListModel::setFound(const QStringList &titles, const ScanResult &result)
{
    for (const QString &title : titles) {
        const Findings *findings = result.find(*conditionTitled(title));
        m_found[title] = findings ? std::visit([](const auto &found) { return int(found.size()); }, *findings) : 0;
    }
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CountRole});
}

bool ConditionListModel::setData(const QModelIndex &index, const QVariant &, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole)
        return false;
    const QString &title = m_titles[index.row()];
    if (m_selected.removeAll(title) == 0)
        m_selected += title;
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

Qt::ItemFlags ConditionListModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable : Qt::NoItemFlags;
}
