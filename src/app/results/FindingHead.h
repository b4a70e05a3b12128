// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/DetailPanel.h"

#include <QWidget>

class QLabel;
class WrappedText;

/// Whom the selected finding is about, and why it cannot be repaired, if so.
class FindingHead : public QWidget
{
    Q_OBJECT

public:
    explicit FindingHead(QWidget *parent = nullptr);

    /// @p finding may be null.
    void showFinding(const DetailPanel &panel, const PersonItem *finding);

private:
    WrappedText *m_name;
    QLabel *m_picture;
    WrappedText *m_email;
    QLabel *m_whyNot;
};
