// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

/// Name, version, copyright, and a way to the product's web page.
class AboutWindowController : public QDialog
{
    Q_OBJECT

public:
    explicit AboutWindowController(QWidget *parent = nullptr);

    void showWindow();
    void moreInfo();
};
