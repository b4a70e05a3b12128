// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
//
// Part of every test under the thread sanitizer. QProcess starts programs by clone() with the memory shared, and the
// sanitizer's own clone() (GCC 12) takes a new process for one whose memory is a copy: in it, it stops looking at locks
// for good. That reaches the test, whose main thread then seems to hold none. Here the copy is made.

#include <sched.h>
#include <sys/types.h>

#include <cstdarg>

extern "C" {

// Names and types are the C library's.
// NOLINTBEGIN
int __clone(int (*run)(void *), void *stack, int flags, void *argument, ...);

int clone(int (*run)(void *), void *stack, int flags, void *argument, ...) noexcept
{
    va_list more;
    va_start(more, argument);
    auto *parentTid = va_arg(more, pid_t *); // which is where CLONE_PIDFD leaves the process's file descriptor
    va_end(more);
    return __clone(run, stack, flags & ~CLONE_VM, argument, parentTid, nullptr, nullptr);
}
// NOLINTEND
}
