// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/RecordJson.h"
#include "generator/ContactGenerator.h"

#include <QFile>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <iostream>
#include <string>

namespace {

constexpr int kUsageError = 2;
/// Also refuses what CLI11 cuts down to the greatest number it can hold.
constexpr qint64 kMostContacts = 1000000000;
constexpr std::size_t kBufferSize = std::size_t{1} << 20;

/// False when @p out does not take everything.
bool writeContacts(QIODevice &out, ContactGenerator &generator)
{
    std::string buffer;
    buffer.reserve(kBufferSize + kBufferSize / 4);
    const auto flush = [&] {
        const auto size = static_cast<qint64>(buffer.size());
        const bool written = out.write(buffer.data(), size) == size;
        buffer.clear();
        return written;
    };
    for (StoredRecord contact = generator.next(); contact.record; contact = generator.next()) {
        buffer += recordToJson(contact.uid, *contact.record);
        buffer += '\n';
        if (buffer.size() >= kBufferSize && !flush())
            return false;
    }
    return flush();
}

bool writeExpected(QIODevice &out, const ExpectedFindings &findings)
{
    QByteArray json;
    for (const auto &[key, count] : findings.counts) {
        json += json.isEmpty() ? "{" : ", ";
        json += '"' + QByteArray(key.data(), key.size()) + "\": " + QByteArray::number(count);
    }
    json += "}\n";
    return out.write(json) == json.size();
}

bool openExpected(QFile &file, const std::string &path)
{
    const auto mode = QIODevice::WriteOnly | QIODevice::Unbuffered;
    if (path == "-")
        return file.open(stderr, mode);
    file.setFileName(QFile::decodeName(path.c_str()));
    return file.open(mode | QIODevice::Truncate);
}

int fail(const std::string &what, const QFile &file)
{
    std::cerr << "peoplenook-generate: cannot write " << what << ": " << qPrintable(file.errorString()) << '\n';
    return 1;
}

int run(int argc, char **argv)
{
    qint64 count = 0;
    quint32 seed = 1;
    std::string expectedPath;
    CLI::App app("Writes invented contacts as JSON Lines to standard output.", "peoplenook-generate");
    app.add_option("COUNT", count, "How many contacts")->required()->check(CLI::Range(qint64{0}, kMostContacts));
    app.add_option("--seed", seed, "Which contacts; the same number gives the same ones")->capture_default_str();
    app.add_option("--expected", expectedPath, "Where to write how many findings they hold; - for standard error")
        ->type_name("FILE");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? 0 : kUsageError;
    }

    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return fail("standard output", out);
    ContactGenerator generator(count, seed);
    if (!writeContacts(out, generator) || !out.flush())
        return fail("standard output", out);
    if (expectedPath.empty())
        return 0;
    QFile expected;
    if (!openExpected(expected, expectedPath) || !writeExpected(expected, generator.expected()) || !expected.flush())
        return fail(expectedPath == "-" ? "standard error" : '"' + expectedPath + '"', expected);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception &exception) {
        std::fputs(exception.what(), stderr);
        return 1;
    }
}
