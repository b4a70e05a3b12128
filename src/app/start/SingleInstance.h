// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalServer>
#include <QLockFile>

#include <chrono>
#include <memory>

/// One running application per user and address book: later ones pass it their files and exit. Lock and socket are in a
/// folder private to the user; leftovers of a killed application do not matter.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    /// @p where is as for openStore(); a file need not exist yet, and all spellings of its path are one address book.
    /// An empty @p folder is the user's runtime folder (XDG Base Directory).
    explicit SingleInstance(const QString &where, const QString &folder = {});
    ~SingleInstance() override;

    /// True if another application has the address book open and has taken over @p files (made absolute here). False:
    /// this application should open its window. It then emits calledAgain(), unless another one holds the lock without
    /// answering within @p patience; sharing an address book is not an error.
    bool handOver(const QStringList &files, std::chrono::milliseconds patience = std::chrono::seconds(5));

    /// Claims the first place for a window, from 0, that no other application has; 0 if none is free.
    int place();

    /// Where other instances find this one.
    const QString &socketPath() const { return m_socketPath; }

Q_SIGNALS:
    /// Another instance was started, with these files to import (possibly none).
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
