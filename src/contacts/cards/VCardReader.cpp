// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/VCardReader.h"

#include "contacts/cards/CardStream.h"
#include "contacts/cards/TextCoding.h"

#include <algorithm>
#include <deque>
#include <future>
#include <optional>
#include <span>
#include <string_view>
#include <thread>
#include <utility>

namespace {

/// What a stretch of the data holds, its lines counted from its begin.
struct Piece
{
    struct Person
    {
        ImportedRecord imported;
        std::size_t problems = 0; // that were met up to its end
        qint64 bytes = 0; // up to its end
    };
    std::vector<Person> people;
    std::vector<ImportProblem> problems;
    qint64 bytes = 0;
    qint64 lines = 0;
};

Piece readPiece(const QByteArray &data)
{
    Piece piece;
    CardStream stream(data);
    for (ImportedRecord person = stream.next(); person.record; person = stream.next())
        piece.people.push_back({std::move(person), stream.problemCount(), stream.bytesRead()});
    piece.problems = stream.takeProblems();
    piece.bytes = data.size();
    piece.lines = stream.linesRead();
    return piece;
}

/// The first place at or after @p from where a reader may begin anew and yet reads all as if it came from before:
/// where a card begins right after the end of another. No fold, soft break or base64 goes on over an END, and a BEGIN
/// behind it ends whatever else is open: junk, another component, an agent without an END of its own. The end of the
/// data where there is none.
qsizetype placeToCut(std::string_view data, std::size_t from)
{
    constexpr std::string_view begin = "\nBEGIN:VCARD";
    constexpr std::string_view end = "\nEND:VCARD";
    for (std::size_t at = data.find(begin, from); at != std::string_view::npos; at = data.find(begin, at + 1)) {
        const std::string_view after = data.substr(at + begin.size(), 1);
        std::string_view before = data.substr(0, at);
        while (before.ends_with('\r') || before.ends_with('\n'))
            before.remove_suffix(1);
        if (before.ends_with(end) && (after == "\r" || after == "\n"))
            return qsizetype(at) + 1;
    }
    return qsizetype(data.size());
}

/// One more than can be read at once: whoever asks is busy with what it was given.
std::size_t mostAhead()
{
    static const std::size_t processors = std::max(2U, std::thread::hardware_concurrency()); // costs a system call
    return processors + 1;
}

} // namespace

/// All but the last piece of the data are read ahead, on threads of their own; the last one, which is all of it where
/// it is small or cannot be cut, as it is asked for.
class VCardReader::Private
{
public:
    Private(const QByteArray &all, qsizetype wantedPiece)
        : data(utf8FromWideData(all, &brokenLines)), m_wantedPiece(wantedPiece)
    {
        readAhead();
    }

    ImportedRecord next();

    std::vector<qint64> brokenLines; // of wide data, where characters were replaced; the first to be made
    const QByteArray data;
    std::vector<ImportProblem> problems;
    qint64 bytesRead = 0;

private:
    void readAhead();
    void takeNextPiece();
    void take(std::span<const ImportProblem> met);
    QByteArray stretch(qsizetype begin, qsizetype end) const
    {
        return QByteArray::fromRawData(data.constData() + begin, end - begin);
    }

    const qsizetype m_wantedPiece;
    std::deque<std::future<Piece>> m_ahead; // behind m_piece
    qsizetype m_aheadEnd = 0; // where the next piece begins
    bool m_isCut = false; // into all its pieces
    Piece m_piece;
    std::size_t m_person = 0; // the next of the piece
    std::size_t m_problem = 0; // the same
    std::optional<CardStream> m_last; // once all others are taken
    qint64 m_bytesBefore = 0; // the piece, or the last one
    qint64 m_linesBefore = 0;
};

void VCardReader::Private::readAhead()
{
    while (!m_isCut && m_ahead.size() < mostAhead()) {
        const qsizetype begin = m_aheadEnd;
        m_aheadEnd = data.size() - begin > m_wantedPiece ? placeToCut(view(data), std::size_t(begin + m_wantedPiece))
                                                         : data.size();
        m_isCut = m_aheadEnd == data.size();
        if (!m_isCut)
            m_ahead.push_back(
                std::async(std::launch::async, [piece = stretch(begin, m_aheadEnd)] { return readPiece(piece); }));
    }
}

void VCardReader::Private::takeNextPiece()
{
    m_bytesBefore += m_piece.bytes;
    m_linesBefore += m_piece.lines;
    m_person = 0;
    m_problem = 0;
    if (m_ahead.empty()) {
        m_piece = {};
        m_last.emplace(stretch(m_bytesBefore, data.size()));
        return;
    }
    m_piece = m_ahead.front().get();
    m_ahead.pop_front();
    readAhead();
}

/// The lines of @p met count from the begin of its piece.
void VCardReader::Private::take(std::span<const ImportProblem> met)
{
    for (const ImportProblem &problem : met)
        problems.push_back({problem.kind, m_linesBefore + problem.line, problem.reason});
}

ImportedRecord VCardReader::Private::next()
{
    while (!m_last) {
        const std::span met(m_piece.problems);
        if (m_person == m_piece.people.size()) {
            take(met.subspan(m_problem));
            takeNextPiece();
            continue;
        }
        auto &[imported, problemCount, bytes] = m_piece.people[m_person++];
        take(met.subspan(m_problem, problemCount - m_problem));
        m_problem = problemCount;
        bytesRead = m_bytesBefore + bytes;
        imported.line += m_linesBefore;
        return std::move(imported);
    }
    ImportedRecord imported = m_last->next();
    take(m_last->takeProblems());
    bytesRead = m_bytesBefore + m_last->bytesRead();
    imported.line += m_linesBefore;
    return imported;
}

VCardReader::VCardReader(const QByteArray &data, qsizetype pieceSize)
    : d(std::make_unique<Private>(data, pieceSize)) { }

VCardReader::~VCardReader() = default;

ImportedRecord VCardReader::next()
{
    return d->next();
}

std::vector<ImportProblem> VCardReader::takeProblems()
{
    std::vector<ImportProblem> problems = std::exchange(d->problems, {});
    if (d->brokenLines.empty())
        return problems;
    for (const qint64 line : std::exchange(d->brokenLines, {})) {
        problems.push_back({ImportProblem::Kind::LostLine, line,
            QStringLiteral("half of a UTF-16 character without its other half, replaced by U+FFFD")});
    }
    std::ranges::stable_sort(problems, {}, &ImportProblem::line);
    return problems;
}

qint64 VCardReader::bytesRead() const
{
    return d->bytesRead;
}

qint64 VCardReader::totalBytes() const
{
    return d->data.size();
}
