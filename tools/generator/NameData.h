// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <array>

/// The raw form of a Culture, in UTF-8. Names are separated by spaces, each followed by ':' and its ASCII spelling
/// where dropping accents does not give it; every head is combined with every tail. Other lists are separated by '|'.
struct CultureText
{
    quint32 shares;
    bool phonetic;
    const char *firstHeads;
    const char *firstTails;
    const char *lastHeads;
    const char *lastTails;
    const char *organizations;
    const char *departments;
    const char *jobTitles;
    const char *streets;
    const char *notes;
    /// One line a country: name|code|phone pattern|...|city/state/zip pattern|...
    const char *countries;
};

extern const std::array<CultureText, 7> kLatinCultures;
extern const std::array<CultureText, 6> kOtherCultures;

extern const char *const kHomeHosts;
extern const char *const kWorkHosts;
extern const char *const kNicknames;
extern const char *const kCustomLabels;
