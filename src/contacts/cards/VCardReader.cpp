// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/VCardReader.h"

#include "contacts/cards/CardMap.h"
#include "contacts/cards/CardReader.h"
#include "contacts/cards/LineReader.h"

namespace {

constexpr std::string_view kCard = "VCARD";

/// Adds a line as it was before it was parsed, escaped for a card that is the value of a line.
void appendEscaped(std::string &out, const CardLine &line)
{
    std::string text;
    if (line.hasColon) {
        if (!line.group.empty())
            text.append(line.group).push_back('.');
        text.append(line.name).append(line.params).push_back(':');
    }
    text += line.value;
    for (const char c : text) {
        if (c == '\\' || c == ',' || c == ';')
            out.push_back('\\');
        out.push_back(c);
    }
    out.push_back('\n');
}

bool hasReadableLine(const std::vector<CardLine> &lines)
{
    return lines.empty()
        || std::ranges::any_of(lines, [](const CardLine &line) { return line.hasColon && !line.name.empty(); });
}

} // namespace

/// Finds the cards among the lines and has a record made of each.
class VCardReader::Private
{
public:
    explicit Private(const QByteArray &data) : lines(utf8FromWideData(data, &brokenLines)) { }

    ImportedRecord next();

    std::vector<qint64> brokenLines; // of wide data, where characters were replaced; the first to be made
    LineReader lines;
    std::vector<ImportProblem> problems;

private:
    bool takeLine();
    bool findCard();
    void passOverComponent();
    void addJunk();
    void reportJunk();
    bool collectLines();
    void reportBreakOff(const ImportedRecord &imported);
    void takeAgent(CardLine &agent);

    CardLine m_line;
    bool m_isPushedBack = false; // m_line is to be taken again
    qint64 m_junkLines = 0; // of the run of lines outside cards that is being passed over
    qint64 m_junkStart = 0;
    std::vector<CardLine> m_card;
    CardReader m_cardReader;
};

bool VCardReader::Private::takeLine()
{
    return std::exchange(m_isPushedBack, false) || lines.next(m_line);
}

void VCardReader::Private::addJunk()
{
    if (m_junkLines++ == 0)
        m_junkStart = m_line.number;
}

void VCardReader::Private::reportJunk()
{
    if (m_junkLines > 0) {
        const QString reason = m_junkLines == 1 ? QStringLiteral("a line outside any card")
                                                : QStringLiteral("%1 lines outside any card").arg(m_junkLines);
        problems.push_back({ImportProblem::Kind::LostLine, m_junkStart, reason});
    }
    m_junkLines = 0;
}

void VCardReader::Private::passOverComponent()
{
    reportJunk();
    const std::string name(trimmed(m_line.value));
    const qint64 start = m_line.number;
    int depth = 1;
    while (depth > 0 && takeLine() && !m_line.isBegin(kCard)) {
        if (m_line.isBegin(name))
            ++depth;
        else if (m_line.isEnd(name))
            --depth;
    }
    m_isPushedBack = depth > 0 && m_line.isBegin(kCard);
    problems.push_back({ImportProblem::Kind::LostLine, start,
        QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())).simplified().left(40)
            % QStringLiteral(" is not a card")});
}

bool VCardReader::Private::findCard()
{
    while (takeLine()) {
        if (m_line.isBegin(kCard)) {
            reportJunk();
            return true;
        }
        if (m_line.area() == CardArea::Begin)
            passOverComponent();
        else
            addJunk();
        lines.releaseLines();
    }
    reportJunk();
    return false;
}

/// False where the card has no END.
bool VCardReader::Private::collectLines()
{
    m_card.clear();
    while (takeLine()) {
        if (m_line.isEnd(kCard))
            return true;
        if (m_line.area() == CardArea::Begin) {
            m_isPushedBack = true;
            return false;
        }
        m_card.push_back(m_line);
        if (m_line.area() == CardArea::Agent)
            takeAgent(m_card.back());
    }
    return false;
}

/// The last line of such a card, a picture for instance, may be there in part only.
void VCardReader::Private::reportBreakOff(const ImportedRecord &imported)
{
    constexpr qsizetype most = 40;
    const auto text = [&imported](ABProperty property) {
        const QString *value = imported.record->text(property);
        return value ? *value : QString();
    };
    QString name = m_cardReader.formattedName();
    if (name.isEmpty())
        name = text(kABFirstNameProperty) % u' ' % text(kABLastNameProperty);
    name = name.simplified().left(most);
    QString reason = QStringLiteral("the card ");
    if (!name.isEmpty())
        reason += u'"' % name % u"\" ";
    reason += u"breaks off";
    const std::string_view last = m_card.empty() ? std::string_view() : m_card.back().name;
    if (!last.empty())
        reason += u" in " % QString::fromUtf8(last.data(), static_cast<qsizetype>(last.size())).simplified().left(most);
    reason += u", without END:VCARD";
    const qint64 line = m_card.empty() ? imported.line : m_card.back().number;
    problems.push_back({ImportProblem::Kind::LostLine, line, reason});
}

void VCardReader::Private::takeAgent(CardLine &agent)
{
    const bool beginsHere = equalsIgnoringCase(trimmed(agent.value), "BEGIN:VCARD");
    if (!beginsHere) {
        if (!trimmed(agent.value).empty() || !takeLine())
            return;
        m_isPushedBack = !m_line.isBegin(kCard);
        if (m_isPushedBack)
            return;
    }
    std::string &text = lines.texts().add();
    text = "BEGIN:VCARD\n";
    bool mayNest = false;
    int depth = 1;
    while (depth > 0 && takeLine()) {
        if (m_line.isBegin(kCard) && !mayNest) {
            m_isPushedBack = true; // an END is missing
            break;
        }
        depth += m_line.isBegin(kCard) ? 1 : m_line.isEnd(kCard) ? -1 : 0;
        mayNest = m_line.area() == CardArea::Agent;
        appendEscaped(text, m_line);
    }
    text.pop_back();
    agent.encoding = CardLine::Encoding::Plain;
    agent.value = text;
}

ImportedRecord VCardReader::Private::next()
{
    for (;;) {
        lines.releaseLines();
        if (!findCard())
            return {};
        const qint64 start = m_line.number;
        const bool isWhole = collectLines();
        if (!hasReadableLine(m_card)) {
            problems.push_back({ImportProblem::Kind::LostRecord, start, QStringLiteral("a card without any property")});
            continue;
        }
        ImportedRecord imported = m_cardReader.read(m_card, lines.texts(), problems);
        imported.line = start;
        if (imported.record) {
            if (!isWhole)
                reportBreakOff(imported);
            return imported;
        }
        problems.push_back(
            {ImportProblem::Kind::NotAPerson, start, QStringLiteral("group \"%1\"").arg(m_cardReader.formattedName())});
    }
}

VCardReader::VCardReader(const QByteArray &data) : d(std::make_unique<Private>(data)) { }

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
    return d->lines.bytesRead();
}

qint64 VCardReader::totalBytes() const
{
    return d->lines.totalBytes();
}
