// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/results/ProgressView.h"

#include <QDialog>

/// The small window shown during a scan. It closes only with the scan.
class ProgressWindow : public QDialog
{
    Q_OBJECT

public:
    explicit ProgressWindow(QWidget *parent);

    ProgressView *animationView() const { return m_view; }
    /// Shows it with the arc at its start.
    void begin();

protected:
    void reject() override { }

private:
    ProgressView *m_view;
};
