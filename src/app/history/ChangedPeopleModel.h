// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ChangeHistory.h"

#include <QAbstractListModel>

#include <memory>

/// "1 added, 3 removed"; zeros are left out.
QString countsText(qint64 added, qint64 changed, qint64 removed);

/// The people changed by one step of the history, one row per change.
class ChangedPeopleModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using Step = std::shared_ptr<const ChangeStep>;

    using QAbstractListModel::QAbstractListModel;

    /// Null: none.
    void setStep(const Step &step);
    const RecordedChange &change(int row) const { return m_step->changes[std::size_t(row)]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    Step m_step;
};
