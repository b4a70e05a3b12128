// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/activity/ActivityWindow.h"

#include "app/activity/OpenOutside.h"

#include <QCheckBox>
#include <QListView>
#include <QRegularExpression>
#include <QUrl>

ActivityWindow::ActivityWindow(ActivityLog &log, QWidget *parent)
    : ListWindow(tr("Activity"), {680, 440}, parent), m_log(log), m_list(new QListView(this))
{
    m_lines.setSourceModel(&log);
    m_lines.setFilterRole(ActivityLog::KindRole);
    m_list->setModel(&m_lines);
    m_list->setAccessibleName(tr("Activity"));
    m_list->setWordWrap(true);
    m_list->setIconSize({16, 16});
    m_list->setUniformItemSizes(false);
    auto *diagnostics = new QCheckBox(tr("Show &diagnostic lines"));
    const auto show = [this](bool all) {
        m_lines.setFilterRegularExpression(all
                ? QRegularExpression()
                : QRegularExpression(
                    QStringLiteral("[%1%2]").arg(int(ActivityLog::Kind::Done)).arg(int(ActivityLog::Kind::Failure))));
        setEmpty(m_lines.rowCount() == 0);
        m_list->scrollToBottom();
    };
    connect(m_list, &QListView::activated, this, &ActivityWindow::openFolder);
    say(tr("Double-click an exported file to open its folder."));
    setContent(m_list, nullptr, tr("Nothing has happened yet"),
        tr("What is imported, exported or fails will be listed here."));
    addToFoot(diagnostics);
    show(false);
    connect(diagnostics, &QCheckBox::toggled, this, show);
    connect(&m_lines, &QAbstractItemModel::rowsInserted, this, [this] {
        setEmpty(false);
        m_list->scrollToBottom();
    });
    m_list->setFocus();
}

void ActivityWindow::openFolder(const QModelIndex &line)
{
    const QString folder = line.data(ActivityLog::FolderRole).toString();
    if (!folder.isEmpty())
        openOutside(QUrl::fromLocalFile(folder), m_log);
}
