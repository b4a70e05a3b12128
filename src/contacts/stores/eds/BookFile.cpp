// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/BookFile.h"

#include "contacts/stores/eds/EdsLog.h"

#include <QFile>

#include <SQLiteCpp/Exception.h>

namespace {

QByteArray bytesOf(const SQLite::Column &column)
{
    const char *bytes = column.getText(); // before its size
    return {bytes, column.getBytes()};
}

QByteArray revisionIn(const SQLite::Database &database)
{
    SQLite::Statement question(database, "SELECT value FROM keys WHERE key = 'revision' AND folder_id = 'folder_id'");
    return question.executeStep() ? bytesOf(question.getColumn(0)) : QByteArray();
}

} // namespace

BookFile::BookFile(const QString &path)
    : m_database(QFile::encodeName(path).constData(), SQLite::OPEN_READONLY | SQLite::OPEN_NOMUTEX)
    , m_state(m_database)
    , m_revision(revisionIn(m_database))
    , m_count(std::size_t(m_database.execAndGet("SELECT count(*) FROM folder_id").getInt64()))
    , m_cards(m_database, "SELECT uid, vcard FROM folder_id ORDER BY uid")
{ }

std::unique_ptr<BookFile> BookFile::open(const QString &path, const QByteArray &revision)
{
    if (path.isEmpty() || revision.isEmpty())
        return nullptr;
    try {
        std::unique_ptr<BookFile> file(new BookFile(path));
        if (file->m_revision == revision)
            return file;
        qCInfo(lcEds).noquote() << path << "is of" << file->m_revision << "and the book of" << revision;
    } catch (const SQLite::Exception &exception) {
        qCInfo(lcEds).noquote() << path << "is not read:" << exception.what();
    }
    return nullptr;
}

std::optional<std::vector<EdsBook::Card>> BookFile::next(std::size_t most)
{
    std::vector<EdsBook::Card> cards;
    cards.reserve(most);
    try {
        while (cards.size() < most && !m_cards.isDone() && m_cards.executeStep()) {
            if (m_cards.isColumnNull(0) || m_cards.isColumnNull(1))
                throw SQLite::Exception("a card without a text");
            cards.push_back({bytesOf(m_cards.getColumn(0)), bytesOf(m_cards.getColumn(1))});
        }
    } catch (const SQLite::Exception &exception) {
        qCWarning(lcEds).noquote() << QString::fromUtf8(m_database.getFilename().c_str())
                                   << "cannot be read on:" << exception.what();
        return std::nullopt;
    }
    return cards;
}
