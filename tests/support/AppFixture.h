// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/start/AppDelegate.h"

#include <QTemporaryDir>
#include <QTimer>

/// Presses the button whose text begins like this in the next message, and keeps what the message said.
class Answer : public QObject
{
public:
    explicit Answer(const QString &button);

    QString said;

private:
    QTimer m_timer;
};

/// The running application on an address book of its own.
class AppFixture
{
public:
    /// Starts it on these people, as imported from "people.vcf", and waits for the table.
    void start(std::initializer_list<QByteArray> people);
    /// Starts it on the address book that is there.
    void restart(bool opens = true);
    /// Starts a scan and waits until its first finding is selected.
    void scan();
    void end();

    MainWindow &window() { return m_app->mainWindow(); }
    ContactTableView *contacts() { return window().contactTable(); }
    static QByteArray savedBook();

protected:
    QTemporaryDir m_folder;
    QString m_path; // of the newest address book
    std::unique_ptr<AppDelegate> m_app;
    int m_bookCount = 0;
};

/// Focusable objects of the window, by their path, that a screen reader has no words for, and rows of findings whose
/// words do not say what is wrong.
QStringList unnamedIn(QWidget *window);
