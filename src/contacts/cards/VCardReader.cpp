// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/VCardReader.h"

namespace {

bool beginsCard(const CardLine &line)
{
    return line.frames(CardArea::Begin, "VCARD");
}

bool endsCard(const CardLine &line)
{
    return line.frames(CardArea::End, "VCARD");
}

QString excerpt(const QString &text)
{
    constexpr qsizetype most = 40;
    return text.simplified().left(most);
}

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

bool VCardReader::takeLine()
{
    return std::exchange(m_isPushedBack, false) || m_lines.next(m_line);
}

void VCardReader::lose(qint64 line, const QString &reason)
{
    m_problems.push_back({ImportProblem::Kind::LostLine, line, reason});
}

void VCardReader::reportJunk()
{
    if (m_junkLines > 0)
        lose(m_junkStart,
            m_junkLines == 1 ? QStringLiteral("a line outside any card")
                             : QStringLiteral("%1 lines outside any card").arg(m_junkLines));
    m_junkLines = 0;
}

void VCardReader::passOverComponent()
{
    reportJunk();
    const std::string name(trimmed(m_line.value));
    const qint64 start = m_line.number;
    int depth = 1;
    while (depth > 0 && takeLine() && !beginsCard(m_line))
        depth += m_line.frames(CardArea::Begin, name) ? 1 : m_line.frames(CardArea::End, name) ? -1 : 0;
    m_isPushedBack = depth > 0 && beginsCard(m_line);
    lose(start, excerpt(QString::fromStdString(name)) % QStringLiteral(" is not a card"));
}

bool VCardReader::findCard()
{
    while (takeLine()) {
        if (beginsCard(m_line)) {
            reportJunk();
            return true;
        }
        if (m_line.area() == CardArea::Begin)
            passOverComponent();
        else if (m_junkLines++ == 0)
            m_junkStart = m_line.number;
        releaseLines();
    }
    reportJunk();
    return false;
}

/// False where the card has no END.
bool VCardReader::collectLines()
{
    m_card.clear();
    while (takeLine()) {
        if (endsCard(m_line))
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
void VCardReader::reportBreakOff(const ImportedRecord &imported)
{
    QString name = m_cardReader.formattedName();
    if (name.isEmpty())
        name = imported.record->textOrEmpty(kABFirstNameProperty) % u' '
            % imported.record->textOrEmpty(kABLastNameProperty);
    name = excerpt(name);
    QString reason = QStringLiteral("the card ");
    if (!name.isEmpty())
        reason += u'"' % name % u"\" ";
    reason += u"breaks off";
    const std::string_view last = m_card.empty() ? std::string_view() : m_card.back().name;
    if (!last.empty())
        reason += u" in " % excerpt(QString::fromUtf8(last));
    reason += u", without END:VCARD";
    lose(m_card.empty() ? imported.line : m_card.back().number, reason);
}

void VCardReader::takeAgent(CardLine &agent)
{
    if (!agent.opensCard()) {
        if (!trimmed(agent.value).empty() || !takeLine())
            return;
        m_isPushedBack = !beginsCard(m_line);
        if (m_isPushedBack)
            return;
    }
    std::string &text = m_lines.texts().emplace_back();
    text = "BEGIN:VCARD\n";
    bool mayNest = false;
    int depth = 1;
    while (depth > 0 && takeLine()) {
        if (beginsCard(m_line) && !mayNest) {
            m_isPushedBack = true; // an END is missing
            break;
        }
        depth += beginsCard(m_line) ? 1 : endsCard(m_line) ? -1 : 0;
        mayNest = m_line.area() == CardArea::Agent;
        appendEscaped(text, m_line);
    }
    text.pop_back();
    agent.encoding = CardLine::Encoding::Plain;
    agent.value = text;
}

ImportedRecord VCardReader::next()
{
    for (;;) {
        releaseLines();
        if (!findCard())
            return {};
        const qint64 start = m_line.number;
        const bool isWhole = collectLines();
        if (!hasReadableLine(m_card)) {
            m_problems.push_back(
                {ImportProblem::Kind::LostRecord, start, QStringLiteral("a card without any property")});
            continue;
        }
        ImportedRecord imported = m_cardReader.read(m_card, m_lines.texts(), m_problems);
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

std::vector<ImportProblem> VCardReader::takeProblems()
{
    std::vector<ImportProblem> problems = std::exchange(m_problems, {});
    if (m_brokenLines.empty())
        return problems;
    for (const qint64 line : std::exchange(m_brokenLines, {})) {
        problems.push_back({ImportProblem::Kind::LostLine, line,
            QStringLiteral("half of a UTF-16 character without its other half, replaced by U+FFFD")});
    }
    std::ranges::stable_sort(problems, {}, &ImportProblem::line);
    return problems;
}
