// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <jemalloc/jemalloc.h>

/// Read by jemalloc when the program starts. An address book is millions of small texts: large pages are touched for
/// the first time hundreds of times less often. Few arenas, because each takes at least one such page (2 MiB).
const char *malloc_conf = "thp:always,narenas:2"; // NOLINT(*-avoid-non-const-global-variables): its name and type
