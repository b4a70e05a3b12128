// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/ProgressWindow.h"

#include <QVBoxLayout>

ProgressWindow::ProgressWindow(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint), m_view(new ProgressView(this))
{
    setWindowTitle(tr("Scan"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_view);
}

void ProgressWindow::begin()
{
    m_view->start();
    m_view->setProgress(0);
    m_view->setProgress(1);
    show();
    raise();
}
