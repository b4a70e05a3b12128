// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardStream.h"

#include "contacts/cards/WordTable.h"

namespace {

constexpr std::string_view kCard = "VCARD";

/// Adds a line as it was before it was parsed, escaped for a card that is the value of a line.
void appendEscaped(std::string &out, const ContentLine &line)
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

bool hasReadableLine(const std::vector<ContentLine> &lines)
{
    return lines.empty()
        || std::ranges::any_of(lines, [](const ContentLine &line) { return line.hasColon && !line.name.empty(); });
}

} // namespace

bool CardStream::takeLine()
{
    return std::exchange(m_isPushedBack, false) || m_lines.next(m_line);
}

void CardStream::addJunk()
{
    if (m_junkLines++ == 0)
        m_junkStart = m_line.number;
}

void CardStream::reportJunk()
{
    if (m_junkLines > 0) {
        const QString reason = m_junkLines == 1 ? QStringLiteral("a line outside any card")
                                                : QStringLiteral("%1 lines outside any card").arg(m_junkLines);
        m_problems.push_back({ImportProblem::Kind::LostLine, m_junkStart, reason});
    }
    m_junkLines = 0;
}

void CardStream::passOverComponent()
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
    m_problems.push_back({ImportProblem::Kind::LostLine, start,
        QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())).simplified().left(40)
            % QStringLiteral(" is not a card")});
}

bool CardStream::findCard()
{
    while (takeLine()) {
        if (m_line.isBegin(kCard)) {
            reportJunk();
            return true;
        }
        if (m_line.id == CardName::Begin)
            passOverComponent();
        else
            addJunk();
        m_lines.releaseLines();
    }
    reportJunk();
    return false;
}

/// False where the card has no END.
bool CardStream::collectLines()
{
    m_card.clear();
    while (takeLine()) {
        if (m_line.isEnd(kCard))
            return true;
        if (m_line.id == CardName::Begin) {
            m_isPushedBack = true;
            return false;
        }
        m_card.push_back(m_line);
        if (m_line.id == CardName::Agent)
            takeAgent(m_card.back());
    }
    return false;
}

/// The last line of such a card, a picture for instance, may be there in part only.
void CardStream::reportBreakOff(const ImportedRecord &imported)
{
    constexpr qsizetype most = 40;
    const auto text = [&imported](ABProperty property) {
        const QString *value = imported.record->text(property);
        return value ? *value : QString();
    };
    QString name = m_cardReader.formattedName();
    if (name.isEmpty())
        name = text(ABProperty::FirstName) % u' ' % text(ABProperty::LastName);
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
    m_problems.push_back({ImportProblem::Kind::LostLine, line, reason});
}

void CardStream::takeAgent(ContentLine &agent)
{
    const bool beginsHere = equalsIgnoringCase(trimmed(agent.value), "BEGIN:VCARD");
    if (!beginsHere) {
        if (!trimmed(agent.value).empty() || !takeLine())
            return;
        m_isPushedBack = !m_line.isBegin(kCard);
        if (m_isPushedBack)
            return;
    }
    std::string &text = m_lines.newText();
    text = "BEGIN:VCARD\n";
    bool mayNest = false;
    int depth = 1;
    while (depth > 0 && takeLine()) {
        if (m_line.isBegin(kCard) && !mayNest) {
            m_isPushedBack = true; // an END is missing
            break;
        }
        depth += m_line.isBegin(kCard) ? 1 : m_line.isEnd(kCard) ? -1 : 0;
        mayNest = m_line.id == CardName::Agent;
        appendEscaped(text, m_line);
    }
    text.pop_back();
    agent.encoding = ContentLine::Encoding::Plain;
    agent.value = text;
}

ImportedRecord CardStream::next()
{
    for (;;) {
        m_lines.releaseLines();
        if (!findCard())
            return {};
        const qint64 start = m_line.number;
        const bool isWhole = collectLines();
        if (!hasReadableLine(m_card)) {
            m_problems.push_back(
                {ImportProblem::Kind::LostRecord, start, QStringLiteral("a card without any property")});
            continue;
        }
        ImportedRecord imported = m_cardReader.read(m_card, m_lines, m_problems);
        imported.line = start;
        if (imported.record) {
            if (!isWhole)
                reportBreakOff(imported);
            return imported;
        }
        m_problems.push_back(
            {ImportProblem::Kind::NotAPerson, start, QStringLiteral("group \"%1\"").arg(m_cardReader.formattedName())});
    }
}
