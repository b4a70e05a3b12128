// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/SafeText.h"

#include <QStringList>

namespace {

/// Of a unit of a text that it may be no good as it is; without branches, so that whole texts are tested at once.
constexpr bool needsCare(char16_t unit)
{
    const bool isControl = (unit < 0x20) & (unit != u'\t') & (unit != u'\n');
    const bool isSurrogate = (unit & 0xF800) == 0xD800;
    return isControl | isSurrogate | (unit >= 0xFFFE);
}

bool needsCare(const QString &text)
{
    bool found = false;
    for (const QChar unit : text)
        found |= needsCare(unit.unicode());
    return found;
}

} // namespace

QString TextRepairs::description() const
{
    QStringList parts;
    const auto add = [&parts](qint64 count, const char *one, const char *many) {
        if (count > 0)
            parts += QString::number(count) % u' ' % QLatin1StringView(count == 1 ? one : many);
    };
    add(characters, "character that no document can hold was replaced",
        "characters that no document can hold were replaced");
    add(cutTexts, "text was cut to what a cell can hold", "texts were cut to what a cell can hold");
    QString text = parts.join(QStringLiteral(", "));
    if (!firstContact.isEmpty())
        text += QStringLiteral("; the first contact with such a text: ") % firstContact;
    return text;
}

QString safeText(const QString &text, TextRepairs *repairs, LineEnds lineEnds)
{
    if (!needsCare(text))
        return text;
    QString safe;
    safe.reserve(text.size());
    qint64 replaced = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        const QChar next = i + 1 < text.size() ? text.at(i + 1) : QChar();
        if (!needsCare(unit.unicode())) {
            safe += unit;
        } else if (unit.isHighSurrogate() && next.isLowSurrogate()) {
            safe += unit;
            safe += next;
            ++i;
        } else if (unit == u'\r') {
            if (lineEnds == LineEnds::AsTheyAre)
                safe += unit;
            else if (next != u'\n')
                safe += u'\n';
        } else {
            safe += QChar::ReplacementCharacter;
            ++replaced;
        }
    }
    if (repairs)
        repairs->characters += replaced;
    return safe;
}

QString safeCell(const QString &text, qsizetype maximum, TextRepairs *repairs)
{
    QString safe = safeText(text, repairs);
    if (safe.size() <= maximum)
        return safe;
    if (repairs)
        ++repairs->cutTexts;
    return safe.first(maximum > 0 && safe.at(maximum - 1).isHighSurrogate() ? maximum - 1 : maximum);
}

QString withoutInsertions(QString safe, TextRepairs *repairs)
{
    if (repairs)
        repairs->characters += safe.count(QChar::ObjectReplacementCharacter);
    return safe.replace(QChar::ObjectReplacementCharacter, QChar::ReplacementCharacter);
}
