// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/OutlineViewController.h"

#include <QGroupBox>

class QAbstractButton;
class QButtonGroup;
class QGridLayout;

/// The repairs offered for the selected finding, each with its key.
class OptionBox : public QGroupBox
{
    Q_OBJECT

public:
    /// @p controller must outlive this.
    explicit OptionBox(OutlineViewController &controller, QWidget *parent = nullptr);

    /// Those for the selected finding; Tab goes from @p before through them to @p after.
    void showOptions(QWidget *before, QWidget *after);
    /// Null without one.
    QAbstractButton *checkedOption() const;

private:
    OutlineViewController &m_controller;
    QGridLayout *m_options;
    QButtonGroup *m_buttons;
    std::optional<OptionGroup> m_shown;
};
