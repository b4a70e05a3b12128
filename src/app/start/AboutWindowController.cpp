// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/AboutWindowController.h"

#include "app/activity/OpenOutside.h"
#include "app/activity/WebPages.h"
#include "app/look/Controls.h"

#include <QApplication>
#include <QBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr int kIconSize = 96;

} // namespace

AboutWindowController::AboutWindowController(ActivityLog &log, QWidget *parent) : QDialog(parent), m_log(log)
{
    setWindowTitle(tr("About %1").arg(QApplication::applicationDisplayName()));
    auto *icon = new QLabel;
    icon->setPixmap(QApplication::windowIcon().pixmap(kIconSize));
    auto *title = new QLabel(QApplication::applicationDisplayName());
    makeHeadline(title);
    auto *version = new QLabel(tr("Version %1").arg(QApplication::applicationVersion()));
    auto *copyright = new QLabel(tr("Copyright © 2026 The Brindle PeopleNook developers"));
    auto *licence = new QLabel(tr("Free software under the GNU General Public License, version 3 or later."));
    licence->setWordWrap(true);
    auto *more = new QPushButton(tr("More Info ..."));
    connect(more, &QPushButton::clicked, this, &AboutWindowController::moreInfo);
    for (QLabel *label : {version, copyright, licence})
        setTextColour(label, ColourRole::Quiet);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 24, 32, 24);
    for (QLabel *label : {icon, title, version, copyright, licence}) {
        label->setAlignment(Qt::AlignHCenter);
        layout->addWidget(label);
    }
    layout->addWidget(more, 0, Qt::AlignHCenter);
}

void AboutWindowController::showWindow()
{
    show();
    raise();
    activateWindow();
}

void AboutWindowController::moreInfo()
{
    openOutside(kProductPage, m_log);
}
