// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/results/ProgressView.h"

#include <QDialog>

/// The small window that is shown during a scan. It closes with the scan, not before.
class ProgressWindow : public QDialog
{
    Q_OBJECT

public:
    explicit ProgressWindow(QWidget *parent);

    ProgressView *animationView() const { return m_view; }
    /// Shows it with an arc that starts from the beginning.
    void begin();

protected:
    void reject() override { }

private:
    ProgressView *m_view;
};
