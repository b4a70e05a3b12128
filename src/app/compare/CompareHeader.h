// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/Comparison.h"

#include <QWidget>

class QPushButton;

/// Who is compared, and two ways to choose for all rows at once.
class CompareHeader : public QWidget
{
    Q_OBJECT

public:
    CompareHeader(const std::vector<PersonRecordPtr> &records, const QString &firstUid, QWidget *parent);

    QPushButton *keepButton() const { return m_keep; }
    QPushButton *repairButton() const { return m_repair; } ///< can be checked

private:
    QPushButton *m_keep;
    QPushButton *m_repair;
};
