// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "faults/DiskCall.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <sys/stat.h>
#include <vector>

/// A folder on a disk whose power may fail. What was synced stays. Any part of the rest may be there: of a write some
/// sectors or pages, of a file only its size or its name.
class SimulatedDisk
{
public:
    using Files = std::map<std::string, std::optional<std::string>>; ///< by path; nothing: a folder

    struct Call : DiskCall
    {
        std::string path;
        std::string data;
    };

    /// What faults/FaultShim.cpp recorded.
    static std::vector<Call> callsIn(const std::string &record)
    {
        std::ifstream in(record, std::ios::binary);
        std::vector<Call> calls;
        for (DiskCall call = {}; in.read(reinterpret_cast<char *>(&call), sizeof call);) {
            calls.push_back({call, std::string(call.pathSize, '\0'), std::string(call.dataSize, '\0')});
            in.read(calls.back().path.data(), std::streamsize(call.pathSize));
            in.read(calls.back().data.data(), std::streamsize(call.dataSize));
        }
        return calls;
    }

    /// With everything that is in the folder now, on the disk.
    explicit SimulatedDisk(const std::string &folder) : m_folder(folder)
    {
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder)) {
            struct stat status = {};
            ::stat(entry.path().c_str(), &status);
            const auto file = std::make_shared<File>(File{entry.is_directory(), {}, {}});
            std::ifstream in(entry.path(), std::ios::binary);
            if (!file->isFolder)
                file->synced.assign(std::istreambuf_iterator<char>(in), {});
            m_files[status.st_ino] = m_names[entry.path()] = file;
        }
    }

    void make(const Call &call)
    {
        using Kind = DiskCall::Kind;
        FilePtr &file = m_files[call.file];
        if (call.kind == Kind::Make || call.kind == Kind::MakeFolder)
            file = std::make_shared<File>(File{call.kind == Kind::MakeFolder, {}, {}});
        if (call.kind == Kind::Write || call.kind == Kind::Cut) {
            file->pending.push_back(call);
        } else if (call.kind == Kind::Sync && file && !file->isFolder) {
            file->synced = contentOf(*file, always, kWhole);
            file->pending.clear();
        } else if (call.kind == Kind::Sync) {
            std::erase_if(m_pendingNames, [&](const NameChange &pending) {
                return folderOf(pending.path) == call.path && pending.applyTo(m_names);
            });
        } else if (call.kind != Kind::Tell) {
            m_pendingNames.push_back({call.path, call.kind == Kind::Unlink ? nullptr : file, call.data});
        }
    }

    /// As it is while there is power.
    Files now() const { return filesWith(always, kWhole); }

    /// Something that may be left if the power fails now.
    Files afterPowerCut(std::mt19937 &random) const
    {
        constexpr unsigned kChances[] = {0, 10, 50, 90, 100};
        constexpr std::size_t kPieces[] = {512, 4096, kWhole};
        const auto isDone = [&random, chance = kChances[random() % 5]] { return random() % 100 < chance; };
        return filesWith(isDone, kPieces[random() % 3]);
    }

private:
    static constexpr std::size_t kWhole = std::size_t(1) << 40;
    static bool always() { return true; }

    struct File
    {
        bool isFolder;
        std::string synced;
        std::vector<Call> pending;
    };
    using FilePtr = std::shared_ptr<File>;
    using Names = std::map<std::string, FilePtr>;
    struct NameChange
    {
        std::string path;
        FilePtr file; ///< null: the name is free
        std::string formerPath;

        bool applyTo(Names &names) const
        {
            names.erase(formerPath);
            names.erase(path);
            return !file || names.emplace(path, file).second;
        }
    };

    static std::string folderOf(const std::string &path) { return path.substr(0, path.rfind('/')); }

    template <typename IsDone> static std::string contentOf(const File &file, IsDone isDone, std::size_t pieceSize)
    {
        std::string content = file.synced;
        for (const Call &call : file.pending) {
            const auto start = std::size_t(call.offset);
            const std::size_t end = start + call.data.size();
            if (isDone())
                content.resize(call.kind == DiskCall::Kind::Cut ? start : std::max(content.size(), end));
            for (std::size_t at = start, next = 0; at < end; at = next) {
                next = std::min((at / pieceSize + 1) * pieceSize, end);
                if (!isDone())
                    continue;
                content.resize(std::max(content.size(), next));
                content.replace(at, next - at, call.data, at - start, next - at);
            }
        }
        return content;
    }

    template <typename IsDone> Files filesWith(IsDone isDone, std::size_t pieceSize) const
    {
        Names names = m_names;
        for (const NameChange &pending : m_pendingNames) {
            if (isDone())
                pending.applyTo(names);
        }
        Files files;
        for (const auto &[path, file] : names) {
            if (folderOf(path) == m_folder || files.contains(folderOf(path)))
                files[path] = file->isFolder ? std::nullopt : std::optional(contentOf(*file, isDone, pieceSize));
        }
        return files;
    }

    std::string m_folder;
    std::map<std::uint64_t, FilePtr> m_files; ///< by inode
    Names m_names; ///< on the disk
    std::vector<NameChange> m_pendingNames;
};
