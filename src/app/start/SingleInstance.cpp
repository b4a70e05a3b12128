// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/SingleInstance.h"

#include "app/activity/AppLog.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

namespace {

// A compositor lets a window come to the front only with the token that the starting program was given.
constexpr const char *kActivationToken = "XDG_ACTIVATION_TOKEN";
constexpr int kPlaces = 8;
constexpr char kTaken = '+';
constexpr std::chrono::milliseconds kRetry(20);

/// The path without links and dots, also of a file or folder that does not exist yet.
QString settled(const QString &path)
{
    const QFileInfo file(path);
    if (file.exists() || file.isRoot())
        return file.canonicalFilePath();
    return settled(file.absolutePath()) + u'/' + file.fileName();
}

/// Where the desktop gives no folder, the lock must not depend on the current one, and no other user may take its
/// place.
QString runtimeFolder()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!folder.isEmpty() && folder == QDir::cleanPath(qEnvironmentVariable("XDG_RUNTIME_DIR")))
        return folder;
    QString own = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/peoplenook");
    QDir().mkpath(own);
    QFile::setPermissions(own, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return own;
}

QString pathInFolder(const QString &where, const QString &folder)
{
    const bool isFile = !where.isEmpty() && !where.startsWith(QLatin1StringView("eds:"));
    const QString book = isFile ? settled(where) : where;
    const QByteArray hash = QCryptographicHash::hash(book.toUtf8(), QCryptographicHash::Sha256);
    const QDir place(folder.isEmpty() ? runtimeFolder() : folder);
    // Short: the path of a socket has room for 107 bytes.
    return place.filePath(QStringLiteral("peoplenook-") + QString::fromLatin1(hash.first(8).toHex()));
}

} // namespace

SingleInstance::SingleInstance(const QString &where, const QString &folder)
    : m_socketPath(pathInFolder(where, folder)), m_lock(m_socketPath + QStringLiteral(".lock"))
{
    m_lock.setStaleLockTime(0); // an application may run for days; only a dead one's lock is void
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *caller = m_server.nextPendingConnection()) {
            connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
            connect(caller, &QLocalSocket::readyRead, this, [this, caller] { receive(caller); });
            receive(caller);
        }
    });
}

SingleInstance::~SingleInstance()
{
    m_server.close();
}

bool SingleInstance::handOver(const QStringList &files, std::chrono::milliseconds patience)
{
    QStringList absolute;
    for (const QString &file : files)
        absolute += QFileInfo(file).absoluteFilePath();
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream << qgetenv(kActivationToken) << absolute;

    const QDeadlineTimer deadline(patience);
    do {
        if (m_lock.tryLock(0)) {
            listen();
            return false;
        }
        if (m_lock.error() != QLockFile::LockFailedError) {
            qCWarning(lcApp, "%s: no lock can be made there", qPrintable(m_socketPath));
            return false;
        }
        if (send(message, patience))
            return true;
        QThread::msleep(static_cast<unsigned long>(kRetry.count())); // the other one is starting or ending
    } while (!deadline.hasExpired());
    return false;
}

int SingleInstance::place()
{
    for (int place = 0; place < kPlaces; ++place) {
        m_place = std::make_unique<QLockFile>(
            QFileInfo(m_socketPath).dir().filePath(QStringLiteral("peoplenook-place-%1.lock").arg(place)));
        m_place->setStaleLockTime(0);
        if (m_place->tryLock(0))
            return place;
    }
    return 0;
}

bool SingleInstance::send(const QByteArray &message, std::chrono::milliseconds patience) const
{
    const int wait = static_cast<int>(patience.count());
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    if (!socket.waitForConnected(wait) || socket.write(message) != message.size())
        return false;
    return socket.waitForReadyRead(wait) && socket.read(1) == QByteArray(1, kTaken);
}

void SingleInstance::listen()
{
    QLocalServer::removeServer(m_socketPath); // a killed application's; the lock says that no one listens there
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server.listen(m_socketPath))
        qCWarning(lcApp, "%s: %s", qPrintable(m_socketPath), qPrintable(m_server.errorString()));
}

void SingleInstance::receive(QLocalSocket *caller)
{
    QByteArray token;
    QStringList files;
    QDataStream stream(caller);
    stream.startTransaction();
    stream >> token >> files;
    if (!stream.commitTransaction())
        return; // not all is there yet
    caller->putChar(kTaken);
    caller->flush();
    caller->disconnectFromServer();
    if (!token.isEmpty())
        qputenv(kActivationToken, token);
    Q_EMIT calledAgain(files);
}
