// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "likeness/PhoneLines.h"

#include <atomic>

/// Runs @p work on the calling thread and @p other on a second one. Only the first reports to @p progress; cancelling
/// ends both.
template <typename Work, typename Other>
void inTwoThreads(const LikenessProgress &progress, const Work &work, const Other &other)
{
    std::atomic<bool> isGivenUp = false;
    Job job;
    job.start([&] { other([&](double) { return !isGivenUp; }); });
    work([&](double done) {
        isGivenUp = isGivenUp || !progress(done);
        return !isGivenUp;
    });
    job.wait();
}
