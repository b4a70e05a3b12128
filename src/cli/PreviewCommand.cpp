// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "cli/FindingsOfCondition.h"
#include "contacts/model/Utf8Text.h"

#include <algorithm>
#include <functional>
#include <map>
#include <numeric>

namespace {

/// The texts of one height, by the place where they begin.
using Row = std::map<int, std::string>;

std::size_t widthOf(const std::string &utf8)
{
    return std::size_t(std::ranges::count_if(utf8, [](char c) { return (c & 0xC0) != 0x80; }));
}

/// From top to bottom, in each line from left to right. Texts that begin at the same place stand below each other;
/// a text that is alone on its line may be longer than its column.
void print(const PreviewDocument &document, std::ostream &out)
{
    constexpr std::size_t kGap = 2;
    std::map<int, Row, std::greater<>> rows;
    for (const PreviewField &field : document.fields)
        rows[field.frame.y()][field.frame.x()] = onOneLine(field.text);
    std::map<int, std::size_t> columnWidths;
    for (const auto &[y, row] : rows) {
        for (auto text = row.begin(); text != row.end(); ++text) {
            std::size_t &width = columnWidths[text->first];
            if (std::next(text) != row.end())
                width = std::max(width, widthOf(text->second) + kGap);
        }
    }
    for (const auto &[y, row] : rows) {
        std::size_t written = 0;
        for (const auto &[x, text] : row) {
            const std::size_t column = std::accumulate(columnWidths.begin(), columnWidths.lower_bound(x),
                std::size_t(0), [](std::size_t sum, const auto &entry) { return sum + entry.second; });
            if (column > written) {
                out << std::string(column - written, ' ');
                written = column;
            }
            out << text;
            written += widthOf(text);
        }
        out << '\n';
    }
}

} // namespace

ExitStatus runPreview(const PreviewOptions &options, const CommandContext &context)
{
    const ConditionGroup *group = FindingsOfCondition::checkedGroup(options.group, options.option, context);
    if (!group)
        return ExitStatus::Usage;
    const auto book = context.openAddressBook();
    if (!book)
        return ExitStatus::Refused;
    FindingsOfCondition findings(*group, options.option, context.console, false);
    const PersonItemPtr node = findings.firstOf(textOfUtf8(options.uid), context);
    if (!node)
        return ExitStatus::Refused;
    findings.controller().selectItem(node);
    print(findings.controller().preview(), context.console.out);
    return ExitStatus::Done;
}
