// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/look/ListWindow.h"
#include "base/Job.h"
#include "base/Result.h"
#include "contacts/book/Ignored.h"

class QTreeWidget;

/// What is ignored in the shared address book, and a button that brings back what is selected. Reads and writes in
/// jobs.
class IgnoredWindow : public ListWindow
{
    Q_OBJECT

public:
    explicit IgnoredWindow(QWidget *parent = nullptr);

    void reload();
    void bringBack();

    QTreeWidget *list() const { return m_list; }
    QPushButton *bringBackButton() const { return m_bringBack; }

Q_SIGNALS:
    void loaded();
    void broughtBack(const std::vector<Ignored> &entries);
    void failed(const QString &reason);

private:
    void setUpList();
    void showIgnored(const Result<std::vector<Ignored>> &ignored);

    std::vector<Ignored> m_entries; // in the order of the list
    QTreeWidget *m_list;
    QPushButton *m_bringBack;
    Job m_reader;
    Job m_writer;
};
