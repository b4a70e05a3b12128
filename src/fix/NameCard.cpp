// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/NameCard.h"

#include <array>

namespace {

struct Row
{
    ABProperty property;
    int y;
    QLatin1StringView label; ///< beside a value
    QLatin1StringView labelAlone;
};

// The blanks differ between the columns.
constexpr std::array kBefore{
    Row{kABTitleProperty, 112, QLatin1StringView("Title :"), QLatin1StringView("Title : ")},
    Row{kABFirstNameProperty, 92, QLatin1StringView("First :"), QLatin1StringView("First : ")},
    Row{kABMiddleNameProperty, 72, QLatin1StringView("Middle :"), QLatin1StringView("Middle : ")},
    Row{kABLastNameProperty, 52, QLatin1StringView("Last : "), QLatin1StringView("Last : ")},
    Row{kABSuffixProperty, 32, QLatin1StringView("Suffix :"), QLatin1StringView("Suffix : ")},
    Row{kABOrganizationProperty, 12, QLatin1StringView("Org name :"), QLatin1StringView("Org name : ")},
};
constexpr QLatin1StringView kOrgNameAloneOfTitleAndSuffix("Org name:");
constexpr QLatin1StringView kLastBesideValueAfter("Last :");

constexpr int kHeight = 17;
constexpr int kLabelWidth = 70;
constexpr int kValueWidth = 210;
constexpr int kTypeY = 132;

void addPair(
    PreviewDocument &document, int x, int y, QLatin1StringView label, const QString &value, PreviewChange change)
{
    document.add({x, y, kLabelWidth, kHeight}, label, kLabelInk);
    document.add({x + kLabelWidth, y, kValueWidth, kHeight}, value, {}, change);
}

/// Before or after the repair; values that the other side does not have are marked.
struct Side
{
    const PersonRecord &record;
    const PersonRecord &other;
    QString type;
    PreviewChange change;
};

/// @p replaced may change a row's labels.
template <typename Replace>
void addColumn(PreviewDocument &document, int x, const Side &side, bool hasNewType, Replace replaced)
{
    addPair(
        document, x, kTypeY, QLatin1StringView("Type :"), side.type, hasNewType ? side.change : PreviewChange::None);
    for (Row row : kBefore) {
        replaced(row);
        const QString *other = side.other.text(row.property);
        if (const QString *value = side.record.text(row.property))
            addPair(
                document, x, row.y, row.label, *value, other && *other == *value ? PreviewChange::None : side.change);
        else
            document.add({x, row.y, kValueWidth, kHeight}, row.labelAlone, kLabelInk);
    }
}

} // namespace

void addNameCard(PreviewDocument &document, const PersonRecord &before, const PersonRecord &after, NameCardForm form,
    const QString &typeAfter)
{
    constexpr int kBeforeLeft = 14;
    constexpr int kAfterLeft = 230;
    const Side left{before, after, QStringLiteral("person"), PreviewChange::Removed};
    const Side right{after, before, typeAfter, PreviewChange::Added};
    const bool hasNewType = left.type != right.type;
    addColumn(document, kBeforeLeft, left, hasNewType, [form](Row &row) {
        if (row.property == kABOrganizationProperty && form == NameCardForm::OfTitleAndSuffix)
            row.labelAlone = kOrgNameAloneOfTitleAndSuffix;
    });
    document.add({kAfterLeft, 152, 110, kHeight}, QStringLiteral("After Fixing"), kHeaderInk);
    addColumn(document, kAfterLeft, right, hasNewType, [](Row &row) {
        if (row.property == kABLastNameProperty)
            row.label = kLastBesideValueAfter;
    });
}
