// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/history/ChangedPeopleModel.h"

#include "contacts/model/NameTexts.h"

#include <QLocale>

#include <array>

QString countsText(qint64 added, qint64 changed, qint64 removed)
{
    const std::array counts{std::pair(added, ChangedPeopleModel::tr("%1 added")),
        std::pair(changed, ChangedPeopleModel::tr("%1 changed")),
        std::pair(removed, ChangedPeopleModel::tr("%1 removed"))};
    QStringList texts;
    for (const auto &[count, text] : counts) {
        if (count > 0)
            texts += text.arg(QLocale().toString(count));
    }
    return texts.join(QStringLiteral(", "));
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
