// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/FetchAhead.h"

#include <array>

namespace FetchAhead {

namespace {

constexpr std::size_t kCacheLine = 64;

/// The properties that conditions look into.
constexpr std::array kTexts{kABFirstNameProperty, kABLastNameProperty, kABTitleProperty, kABSuffixProperty,
    kABNoteProperty, kABNicknameProperty};
constexpr std::array kLists{kABEmailProperty, kABPhoneProperty};

void fetch(const void *begin, std::size_t size)
{
    const auto *bytes = static_cast<const char *>(begin);
    for (std::size_t offset = 0; offset < size; offset += kCacheLine)
        __builtin_prefetch(bytes + offset);
}

void fetch(const QString &text)
{
    fetch(text.constData(), std::size_t(text.size()) * sizeof(QChar));
}

} // namespace

void records(People block)
{
    for (const auto &snapshot : block) {
        fetch(snapshot.record.get(), sizeof(PersonRecord));
    }
}

void values(People block)
{
    for (const auto &snapshot : block) {
        for (const ABProperty property : kTexts) {
            if (const QString *text = snapshot.record->text(property))
                fetch(text->constData(), kCacheLine);
        }
        for (const ABProperty property : kLists) {
            if (const ABMultiValue *list = snapshot.record->multiValue(property))
                fetch(list->entries().data(), list->entries().size_bytes());
        }
    }
}

void entries(People block)
{
    for (const auto &snapshot : block) {
        for (const ABProperty property : kLists) {
            const ABMultiValue *list = snapshot.record->multiValue(property);
            if (!list)
                continue;
            for (const auto &entry : list->entries())
                fetch(entry.text());
        }
    }
}

} // namespace FetchAhead
