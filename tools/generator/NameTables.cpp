// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "generator/NameTables.h"

#include "generator/NameData.h"

#include <QStringList>

namespace {

std::vector<QString> list(const char *text, QChar separator = u'|')
{
    const QStringList words = QString::fromUtf8(text).split(separator, Qt::SkipEmptyParts);
    return {words.begin(), words.end()};
}

QString withoutAccents(const QString &text)
{
    QString ascii;
    for (const QChar letter : text.toLower().normalized(QString::NormalizationForm_D)) {
        if (letter.unicode() < 0x80)
            ascii += letter;
        else if (letter == u'ß')
            ascii += QStringLiteral("ss");
        else if (letter == u'ł')
            ascii += u'l';
        else if (letter == u'ø')
            ascii += u'o';
    }
    return ascii;
}

std::vector<NamePart> parts(const char *text)
{
    std::vector<NamePart> result;
    for (const QString &word : list(text, u' ')) {
        const QString name = word.section(u':', 0, 0);
        result.push_back({name, word.contains(u':') ? word.section(u':', 1) : withoutAccents(name)});
    }
    return result;
}

std::vector<NamePart> names(const char *heads, const char *tails)
{
    const std::vector<NamePart> ends = parts(tails);
    if (ends.empty())
        return parts(heads);
    std::vector<NamePart> result;
    for (const NamePart &head : parts(heads)) {
        for (const NamePart &tail : ends) {
            if (head.text.toLower() != tail.text)
                result.push_back({head.text + tail.text, head.ascii + tail.ascii});
        }
    }
    return result;
}

Country country(const QString &line)
{
    QStringList fields = line.split(u'|');
    Country result{fields.takeFirst(), fields.takeFirst(), {}, {}};
    for (const QString &field : std::as_const(fields)) {
        const QStringList place = field.split(u'/');
        if (place.size() == 1)
            result.phonePatterns.push_back(field);
        else
            result.places.push_back({place[0], place[1].isEmpty() ? QString() : place[1], place[2]});
    }
    return result;
}

Culture culture(const CultureText &text, quint32 firstSlot)
{
    Culture result;
    result.shares = text.shares;
    result.firstSlot = firstSlot;
    result.firstNames = names(text.firstHeads, text.firstTails);
    result.lastNames = names(text.lastHeads, text.lastTails);
    result.organizations = list(text.organizations);
    result.departments = list(text.departments);
    result.jobTitles = list(text.jobTitles);
    result.streets = list(text.streets);
    result.notes = list(text.notes);
    for (const QString &line : list(text.countries, u'\n'))
        result.countries.push_back(country(line));
    result.phonetic = text.phonetic;
    return result;
}

std::vector<Culture> makeCultures()
{
    std::vector<Culture> result;
    quint32 slot = 0;
    const auto add = [&](const CultureText &text) {
        result.push_back(culture(text, slot));
        slot += text.shares;
    };
    for (const CultureText &text : kLatinCultures)
        add(text);
    for (const CultureText &text : kOtherCultures)
        add(text);
    Q_ASSERT(slot == kNameSlots);
    return result;
}

} // namespace

const std::vector<Culture> &cultures()
{
    static const std::vector<Culture> all = makeCultures();
    return all;
}

const Culture &cultureOfSlot(quint32 slot)
{
    static const std::vector<const Culture *> bySlot = [] {
        std::vector<const Culture *> result;
        for (const Culture &culture : cultures())
            result.insert(result.end(), culture.shares, &culture);
        return result;
    }();
    return *bySlot[slot];
}

const CommonWords &commonWords()
{
    static const CommonWords words{list(kHomeHosts), list(kWorkHosts), list(kNicknames), list(kCustomLabels)};
    return words;
}
