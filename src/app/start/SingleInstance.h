// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalServer>
#include <QLockFile>

#include <chrono>
#include <memory>

/// One running application per user and address book: one that is started later hands its files to it and ends.
/// Lock and socket lie in a folder that only this user may enter; what a killed application left there is no obstacle.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    /// @p where is as for openStore(); a file need not exist yet, and different spellings of its path are one address
    /// book. An empty @p folder is the user's runtime folder (XDG Base Directory).
    explicit SingleInstance(const QString &where, const QString &folder = {});
    ~SingleInstance() override;

    /// True when another application has the address book open, and has now taken over @p files (made absolute here).
    /// False: this application is to open its window. From then on it emits calledAgain(), unless another one holds
    /// the lock but did not answer in @p patience; two applications may share an address book, so that is no error.
    bool handOver(const QStringList &files, std::chrono::milliseconds patience = std::chrono::seconds(5));

    /// Takes the first of the places for windows, from 0 on, that no other running application has; 0 without a free
    /// one.
    int place();

    /// Where the others find this one.
    const QString &socketPath() const { return m_socketPath; }

Q_SIGNALS:
    /// The application was started again, with these files to import (perhaps none).
    void calledAgain(const QStringList &files);

private:
    bool send(const QByteArray &message, std::chrono::milliseconds patience) const;
    void listen();
    void receive(QLocalSocket *caller);

    const QString m_socketPath;
    QLockFile m_lock;
    std::unique_ptr<QLockFile> m_place;
    QLocalServer m_server;
};
