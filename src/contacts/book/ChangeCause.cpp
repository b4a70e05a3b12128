// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ChangeCause.h"

#include <QRandomGenerator>

#include <algorithm>
#include <array>

namespace {

/// In the order of ChangeCause::Kind. Stores hold them: a name must not change its meaning.
constexpr std::array<QLatin1StringView, 7> kNames{QLatin1StringView("other"), QLatin1StringView("repair"),
    QLatin1StringView("edit"), QLatin1StringView("deletion"), QLatin1StringView("import"), QLatin1StringView("card"),
    QLatin1StringView("restore")};

/// Short enough to be typed, and too many to meet by chance among the thousands that a history holds.
QString newId()
{
    constexpr int kDigits = 12;
    const quint64 number = QRandomGenerator::system()->generate64() >> (64 - 4 * kDigits);
    return QString::number(number, 16).rightJustified(kDigits, u'0');
}

} // namespace

ChangeCausePtr makeCause(ChangeCause::Kind kind, const QString &description)
{
    return std::make_shared<const ChangeCause>(ChangeCause{newId(), kind, description});
}

QLatin1StringView nameOfKind(ChangeCause::Kind kind)
{
    return kNames[static_cast<std::size_t>(kind)];
}

ChangeCause::Kind kindNamed(QStringView name)
{
    const auto found = std::ranges::find_if(kNames, [name](QLatin1StringView each) { return each == name; });
    return found == kNames.end() ? ChangeCause::Kind::Other : static_cast<ChangeCause::Kind>(found - kNames.begin());
}

QString textOf(const ChangeCause &cause)
{
    const QString kind = nameOfKind(cause.kind);
    return cause.description.isEmpty() ? kind : QString(kind % QStringLiteral(": ") % cause.description);
}
