// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/LineSurplus.h"

#include "contacts/cards/TextCoding.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace {

/// Split at each @p mark that stands in no quotes and behind no backslash.
QByteArrayList splitAt(const QByteArray &text, char mark)
{
    QByteArrayList parts{QByteArray("")};
    bool inQuotes = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        inQuotes = inQuotes != (text[i] == '"');
        if (text[i] == mark && !inQuotes) {
            parts += QByteArray("");
            continue;
        }
        parts.back() += text[i];
        if (text[i] == '\\' && i + 1 < text.size())
            parts.back() += text[++i];
    }
    return parts;
}

struct TextLine
{
    QByteArray group; ///< upper case
    QByteArray name; ///< upper case
    QByteArrayList params;
    QByteArray value;

    explicit TextLine(QByteArray line)
    {
        line.replace("\r\n", "\n").replace("\n ", "").replace("\n\t", "");
        line.truncate(line.indexOf('\n') < 0 ? line.size() : line.indexOf('\n'));
        QByteArrayList halves = splitAt(line, ':');
        value = line.mid(halves.front().size() + 1);
        params = splitAt(halves.front(), ';');
        const QByteArray head = params.takeFirst().toUpper();
        const qsizetype dot = head.indexOf('.');
        group = dot < 0 ? QByteArray() : head.first(dot);
        name = head.mid(dot + 1);
    }

    QSet<QByteArray> types() const
    {
        QSet<QByteArray> words;
        for (const QByteArray &param : params) {
            if (!param.toUpper().startsWith("TYPE="))
                continue;
            for (const QByteArray &word : param.mid(5).toUpper().replace('"', "").split(','))
                words.insert(word);
        }
        return words;
    }
};

QByteArray nameOfParam(const QByteArray &param)
{
    return param.first(std::max<qsizetype>(param.indexOf('='), 0)).toUpper();
}

/// Parameters that belong to the value or its label, which are others now.
bool isOfValue(const QByteArray &param)
{
    static const QSet<QByteArray> names{"", "TYPE", "VALUE", "ENCODING", "CHARSET", "LABEL", "GEO", "X-GOOGLE-LABEL",
        "X-EVOLUTION-E164", "X-SERVICE-TYPE", "X-USER", "X-APPLE-OMIT-YEAR"};
    return names.contains(nameOfParam(param));
}

QByteArray carriedParams(const TextLine &old, const TextLine &line)
{
    QByteArray carried;
    const QSet<QByteArray> types = line.types();
    for (const char *word : {"INTERNET", "PREF"}) { // they name no label
        if (old.types().contains(word) && !types.contains(word))
            carried += QByteArray(";TYPE=") + word;
    }
    for (const QByteArray &param : old.params) {
        const bool isThere = std::ranges::any_of(
            line.params, [&param](const QByteArray &own) { return nameOfParam(own) == nameOfParam(param); });
        if (!isOfValue(param) && !isThere)
            carried += ';' + param;
    }
    return carried;
}

QByteArray mergedValue(const TextLine &old, const TextLine &line)
{
    QByteArrayList parts = splitAt(line.value, ';');
    const QByteArrayList oldParts = splitAt(old.value, ';');
    constexpr qsizetype kOwnParts = 2; // post-office box and extended address, or organisation and department
    if (line.name == "ADR") {
        for (qsizetype i = 0; i < std::min({kOwnParts, parts.size(), oldParts.size()}); ++i)
            parts[i] = oldParts[i];
    } else if (line.name == "ORG" && oldParts.size() > kOwnParts) {
        while (parts.size() < kOwnParts)
            parts += QByteArray("");
        parts += oldParts.mid(kOwnParts);
    } else {
        return line.value;
    }
    return parts.join(';');
}

QString part(const PersonRecord &record, ABProperty property)
{
    const QString *text = record.text(property);
    return text ? *text : QString();
}

QString joined(const QString &a, const QString &separator, const QString &b)
{
    return a.isEmpty() || b.isEmpty() ? QString(a % b) : QString(a % separator % b);
}

/// The texts that Evolution makes to file a person by, in an order of its own.
std::array<QString, 8> fileAsTexts(const PersonRecord &record)
{
    const QString comma = QStringLiteral(", ");
    const QString blank = QStringLiteral(" ");
    const QString last = part(record, ABProperty::LastName);
    const QString first = part(record, ABProperty::FirstName);
    const QString company = part(record, ABProperty::Organization);
    const QString given = joined(first, blank, part(record, ABProperty::MiddleName));
    const QString inBrackets = company.isEmpty() ? QString() : QString(u'(' % company % u')');
    const QString filed = joined(last, comma, given);
    return {filed, joined(last, comma, first), joined(given, blank, last), joined(first, blank, last),
        joined(last, blank, given), company, joined(filed, blank, inBrackets),
        joined(company, blank, filed.isEmpty() ? QString() : QString(u'(' % filed % u')'))};
}

} // namespace

QByteArray withSurplusOf(const QByteArray &old, const QByteArray &lines)
{
    const TextLine was(old);
    const TextLine line(lines);
    qsizetype end = lines.indexOf('\n') + 1;
    while (end > 0 && end < lines.size() && (lines[end] == ' ' || lines[end] == '\t'))
        end = lines.indexOf('\n', end) + 1;
    if (was.name != line.name || end <= 0)
        return lines;
    const qsizetype headSize = std::min(lines.indexOf(';'), lines.indexOf(':'));
    QByteArray head = lines.first(headSize < 0 ? lines.indexOf(':') : headSize);
    for (const QByteArray &param : line.params)
        head += ';' + param;
    return head + carriedParams(was, line) + ':' + mergedValue(was, line) + "\r\n" + lines.mid(end);
}

QByteArray valueOfLine(const QByteArray &line)
{
    return TextLine(line).value;
}

bool isLabelOfAddress(const QByteArray &line, const QByteArray &address)
{
    if (!line.toUpper().contains("LABEL"))
        return false;
    const TextLine label(line);
    const TextLine of(address);
    const auto kinds = [](const TextLine &each) { return each.types() - QSet<QByteArray>{"PREF"}; };
    return label.name == "LABEL" && (label.group.isEmpty() || label.group == of.group) && kinds(label) == kinds(of);
}

QByteArray followingFileAs(const QByteArray &fileAs, const PersonRecord &before, const PersonRecord &after)
{
    const QByteArray value = valueOfLine(fileAs);
    const QString text = unescaped({value.constData(), std::size_t(value.size())});
    const auto known = fileAsTexts(before);
    const auto *form = std::ranges::find(known, text);
    if (text.isEmpty() || form == known.end())
        return {};
    const QString follows = fileAsTexts(after).at(std::size_t(form - known.begin()));
    return follows.isEmpty() ? QByteArray("") : "X-EVOLUTION-FILE-AS:" + escaped(follows).toUtf8() + "\r\n";
}
