// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <csignal>
#include <sys/resource.h>

/// Writes beyond a size fail while it lives, as on a full disk.
class LimitedFileSize
{
public:
    explicit LimitedFileSize(rlim_t size)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{size, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~LimitedFileSize() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    LimitedFileSize(const LimitedFileSize &) = delete;
    LimitedFileSize &operator=(const LimitedFileSize &) = delete;

private:
    rlimit m_before{};
};
