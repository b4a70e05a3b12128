// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Preloaded into a program under test (LD_PRELOAD): counts its calls that change files and spoils one of them. The
// environment says which:
//
//   PEOPLENOOK_FAULT_UNDER  only files below this folder count; everything else works as ever
//   PEOPLENOOK_FAULT_AT     the number of the call, from 1
//   PEOPLENOOK_FAULT        "kill": the process is killed instead of the call
//                           "torn": the same, after half of the bytes of a write
//                           "moved", "replaced", "removed": the file "book" in that folder is, by the name "away", by
//                           "other", or at all
//                           a number: this errno, from that call on
//   PEOPLENOOK_FAULT_WHILE  only while this file exists; without it, always
//   PEOPLENOOK_FAULT_MARK   a file that is made when the call is reached
//   PEOPLENOOK_FAULT_RECORD a file to which every call that succeeds is appended (faults/DiskCall.h), and what the
//                           program writes on standard output; without streams
//
// Calls that open, write, sync, cut, name or unname files count. A disk that is full (ENOSPC) refuses only what needs
// room. SQLite's shared index is written through memory and cannot fail here.

#include "faults/DiskCall.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <mutex>

namespace {

struct Plan
{
    std::string folder;
    std::string mark;
    std::string whileThere;
    int at = 0;
    int error = 0;
    bool torn = false;
};

const char *setting(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

const Plan &plan()
{
    static const Plan made = [] {
        const std::string fault = setting("PEOPLENOOK_FAULT");
        return Plan{setting("PEOPLENOOK_FAULT_UNDER"), setting("PEOPLENOOK_FAULT_MARK"),
            setting("PEOPLENOOK_FAULT_WHILE"), std::atoi(setting("PEOPLENOOK_FAULT_AT")), std::atoi(fault.c_str()),
            fault == "torn"};
    }();
    return made;
}

template <typename Function> Function *real(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

bool isWatched(const char *path)
{
    const std::string &folder = plan().folder;
    return !folder.empty() && path && std::strncmp(path, folder.c_str(), folder.size()) == 0;
}

std::string pathOf(int descriptor)
{
    char target[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), target, sizeof target);
    return {target, length > 0 ? std::size_t(length) : 0};
}

bool counts(const char *path)
{
    return plan().at > 0 && isWatched(path);
}

bool counts(int descriptor)
{
    return plan().at > 0 && isWatched(pathOf(descriptor).c_str());
}

int recordFile()
{
    static const int file = real<int(const char *, int, ...)>("open")(
        setting("PEOPLENOOK_FAULT_RECORD"), O_CREAT | O_WRONLY | O_APPEND | O_CLOEXEC, 0600);
    return file;
}

struct Note
{
    DiskCall::Kind kind;
    int descriptor; ///< used without a path
    const char *path = nullptr;
    std::string_view data = {};
    off_t offset = -1; ///< none: where the descriptor stands
};

/// Makes a call, and writes it down if it succeeds, with no other between.
template <typename Call> auto noted(const Note &note, Call call)
{
    if (recordFile() < 0)
        return call();
    static std::mutex mutex;
    const std::scoped_lock lock(mutex);
    const auto result = call();
    const int errnoBefore = errno;
    const std::string path = note.path ? note.path : pathOf(note.descriptor);
    const bool isTold = note.kind == DiskCall::Kind::Write && note.descriptor == STDOUT_FILENO;
    if (result >= 0 && (isTold || isWatched(path.c_str()))) {
        struct stat status = {};
        note.path ? ::stat(note.path, &status) : ::fstat(note.descriptor, &status);
        const bool isWrite = note.kind == DiskCall::Kind::Write;
        const std::size_t size = isWrite ? std::size_t(result) : note.data.size();
        const off_t end = isWrite && note.offset < 0 ? ::lseek(note.descriptor, 0, SEEK_CUR) : 0;
        DiskCall disk{isTold ? DiskCall::Kind::Tell : note.kind, status.st_ino,
            note.offset < 0 ? end - off_t(size) : note.offset, path.size(), size};
        const iovec parts[] = {{&disk, sizeof disk}, {const_cast<char *>(path.data()), path.size()},
            {const_cast<char *>(note.data.data()), size}};
        if (::writev(recordFile(), parts, 3) != ssize_t(sizeof disk + path.size() + size))
            std::abort();
    }
    errno = errnoBefore;
    return result;
}

std::atomic<int> callCount = 0;

enum class Need { Room, NoRoom };

/// What another program does to the address book. False: nothing of the kind is planned.
bool changeBook()
{
    static const auto call = real<int(const char *, const char *)>("rename");
    const std::string fault = setting("PEOPLENOOK_FAULT");
    const std::string folder = plan().folder + '/';
    if (fault == "moved")
        return call((folder + "book").c_str(), (folder + "away").c_str()) == 0;
    if (fault == "replaced")
        return call((folder + "other").c_str(), (folder + "book").c_str()) == 0;
    return fault == "removed" && real<int(const char *)>("unlink")((folder + "book").c_str()) == 0;
}

bool wasBookChanged()
{
    static const bool isChanged = changeBook();
    return isChanged;
}

/// Counts a call. True: it is to fail, and errno says how. A kill does not return, but for @p tear, half of a write.
template <typename Tear> bool isSpoiled(Need need, Tear tear)
{
    const int errnoBefore = errno;
    const std::string &whileThere = plan().whileThere;
    if (!whileThere.empty() && ::access(whileThere.c_str(), F_OK) != 0) {
        errno = errnoBefore;
        return false;
    }
    const int call = ++callCount;
    if (call < plan().at)
        return false;
    if (call == plan().at) {
        const int mark = real<int(const char *, int, ...)>("open")(plan().mark.c_str(), O_CREAT | O_WRONLY, 0600);
        if (mark >= 0)
            ::close(mark);
    }
    errno = errnoBefore;
    if (plan().error == 0) {
        if (wasBookChanged()) {
            errno = errnoBefore;
            return false;
        }
        if (plan().torn)
            tear();
        ::kill(::getpid(), SIGKILL);
    }
    if (plan().error == ENOSPC && need == Need::NoRoom)
        return false;
    errno = plan().error;
    return true;
}

bool isSpoiled(Need need)
{
    return isSpoiled(need, [] {});
}

bool changesFiles(int flags)
{
    return (flags & (O_CREAT | O_TRUNC)) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

/// A file that is only opened for writing takes no room, but a folder that may only be read refuses it.
bool opens(int flags)
{
    return plan().error == EROFS && (flags & O_ACCMODE) != O_RDONLY;
}

template <typename Write>
ssize_t spoiledWrite(int descriptor, const void *data, std::size_t size, off_t offset, Write write)
{
    if (counts(descriptor) && isSpoiled(Need::Room, [&] { write(size / 2); }))
        return -1;
    const std::string_view text(static_cast<const char *>(data), size);
    return noted({DiskCall::Kind::Write, descriptor, nullptr, text, offset}, [&] { return write(size); });
}

} // namespace

// NOLINTBEGIN: these are the system's names and signatures.
extern "C" {

ssize_t write(int descriptor, const void *data, size_t size)
{
    static const auto call = real<ssize_t(int, const void *, size_t)>("write");
    return spoiledWrite(descriptor, data, size, -1, [&](size_t part) { return call(descriptor, data, part); });
}

#define PEOPLENOOK_ON_PWRITE(NAME, OFFSET)                                                                             \
    ssize_t NAME(int descriptor, const void *data, size_t size, OFFSET offset)                                         \
    {                                                                                                                  \
        static const auto call = real<ssize_t(int, const void *, size_t, OFFSET)>(#NAME);                              \
        return spoiledWrite(                                                                                           \
            descriptor, data, size, offset, [&](size_t part) { return call(descriptor, data, part, offset); });        \
    }

PEOPLENOOK_ON_PWRITE(pwrite, off_t)
PEOPLENOOK_ON_PWRITE(pwrite64, off64_t)

/// Libraries write documents through streams, whose own writes cannot be seen from outside.
size_t fwrite(const void *data, size_t size, size_t count, FILE *stream)
{
    static const auto call = real<size_t(const void *, size_t, size_t, FILE *)>("fwrite");
    if (counts(::fileno(stream)) && isSpoiled(Need::Room))
        return 0;
    return call(data, size, count, stream);
}

#define PEOPLENOOK_ON_DESCRIPTOR(NAME, NEED, KIND, OFFSET, PARAMETERS, ARGUMENTS)                                      \
    int NAME PARAMETERS                                                                                                \
    {                                                                                                                  \
        static const auto call = real<int PARAMETERS>(#NAME);                                                          \
        return counts(descriptor) && isSpoiled(NEED)                                                                   \
            ? -1                                                                                                       \
            : noted({DiskCall::Kind::KIND, descriptor, nullptr, {}, OFFSET}, [&] { return call ARGUMENTS; });          \
    }

PEOPLENOOK_ON_DESCRIPTOR(fsync, Need::Room, Sync, 0, (int descriptor), (descriptor))
PEOPLENOOK_ON_DESCRIPTOR(fdatasync, Need::Room, Sync, 0, (int descriptor), (descriptor))
PEOPLENOOK_ON_DESCRIPTOR(ftruncate, Need::NoRoom, Cut, size, (int descriptor, off_t size), (descriptor, size))
PEOPLENOOK_ON_DESCRIPTOR(ftruncate64, Need::NoRoom, Cut, size, (int descriptor, off64_t size), (descriptor, size))

#define PEOPLENOOK_ON_PATH(NAME, NEED, KIND, FROM, PARAMETERS, ARGUMENTS)                                              \
    int NAME PARAMETERS                                                                                                \
    {                                                                                                                  \
        static const auto call = real<int PARAMETERS>(#NAME);                                                          \
        return counts(path) && isSpoiled(NEED)                                                                         \
            ? -1                                                                                                       \
            : noted({DiskCall::Kind::KIND, -1, path, FROM}, [&] { return call ARGUMENTS; });                           \
    }

PEOPLENOOK_ON_PATH(unlink, Need::NoRoom, Unlink, "", (const char *path), (path))
PEOPLENOOK_ON_PATH(rename, Need::Room, Rename, from, (const char *from, const char *path), (from, path))
PEOPLENOOK_ON_PATH(renameat2, Need::Room, Rename, from,
    (int a, const char *from, int b, const char *path, unsigned flags), (a, from, b, path, flags))
PEOPLENOOK_ON_PATH(link, Need::Room, Link, "", (const char *from, const char *path), (from, path))
PEOPLENOOK_ON_PATH(linkat, Need::Room, Link, "", (int a, const char *from, int b, const char *path, int flags),
    (a, from, b, path, flags))
PEOPLENOOK_ON_PATH(mkdir, Need::Room, MakeFolder, "", (const char *path, mode_t mode), (path, mode))
PEOPLENOOK_ON_PATH(mkstemp, Need::Room, Make, "", (char *path), (path))
PEOPLENOOK_ON_PATH(mkstemp64, Need::Room, Make, "", (char *path), (path))

#define PEOPLENOOK_ON_OPEN(NAME)                                                                                       \
    int NAME(const char *path, int flags, ...)                                                                         \
    {                                                                                                                  \
        static const auto call = real<int(const char *, int, ...)>(#NAME);                                             \
        std::va_list list;                                                                                             \
        va_start(list, flags);                                                                                         \
        const mode_t mode = changesFiles(flags) ? va_arg(list, mode_t) : 0;                                            \
        va_end(list);                                                                                                  \
        const bool matters = (changesFiles(flags) || opens(flags)) && counts(path);                                    \
        if (matters && isSpoiled(Need::Room))                                                                          \
            return -1;                                                                                                 \
        const bool makes = (flags & O_CREAT) != 0 && ::access(path, F_OK) != 0;                                        \
        const auto opened = [&] { return call(path, flags, mode); };                                                   \
        const int file = makes ? noted({DiskCall::Kind::Make, -1, path}, opened) : opened();                           \
        if (file >= 0 && (flags & O_TRUNC) != 0)                                                                       \
            noted({DiskCall::Kind::Cut, file, nullptr, {}, 0}, [] { return 0; });                                      \
        return file;                                                                                                   \
    }

PEOPLENOOK_ON_OPEN(open)
PEOPLENOOK_ON_OPEN(open64)

#define PEOPLENOOK_ON_FOPEN(NAME)                                                                                      \
    FILE *NAME(const char *path, const char *mode)                                                                     \
    {                                                                                                                  \
        static const auto call = real<FILE *(const char *, const char *)>(#NAME);                                      \
        const bool matters = (mode[0] != 'r' || std::strchr(mode, '+')) && counts(path);                               \
        return matters && isSpoiled(Need::Room) ? nullptr : call(path, mode);                                          \
    }

PEOPLENOOK_ON_FOPEN(fopen)
PEOPLENOOK_ON_FOPEN(fopen64)

} // extern "C"
// NOLINTEND
