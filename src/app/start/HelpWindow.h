// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

/// The manual, for desktops without a PDF viewer, or its chapter about the keys.
class HelpWindow : public QWidget
{
    Q_OBJECT

public:
    enum class Part { Everything, Keys };

    explicit HelpWindow(Part part, QWidget *parent = nullptr);
    Part part() const { return m_part; }

private:
    const Part m_part;
};
