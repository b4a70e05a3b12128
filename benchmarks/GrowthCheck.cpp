// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/RecordImporter.h"
#include "support/MemoryStore.h"

#include <QStringEncoder>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <limits>

// Whether the time to read a file, to import it, and to import it again grows no faster than the file does: files of
// many shapes, each of n, 2n and 4n parts. Four times the parts should take four times as long; sixteen would be
// quadratic. Fails when a shape takes more than kMostGrowth times as long.

namespace {

constexpr double kMostGrowth = 7;
constexpr double kTooShortToTell = 0.005; // seconds

struct Shape
{
    const char *name;
    qsizetype parts; // n
    QByteArray (*make)(qsizetype parts);
};

template <typename Part> QByteArray repeated(qsizetype parts, Part part)
{
    QByteArray text;
    for (qsizetype i = 0; i < parts; ++i)
        text += part(QByteArray::number(i));
    return text;
}

/// A card with these lines.
template <typename Part> QByteArray card(qsizetype parts, Part part)
{
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Lee;Ann;;;\r\n" + repeated(parts, part) + "END:VCARD\r\n";
}

QByteArray linesOfJson(qsizetype parts)
{
    return repeated(parts, [](const QByteArray &i) -> QByteArray { return R"({"firstName":")" + i + "\"}\n"; });
}

constexpr auto kShapes = std::to_array<Shape>({
    {"cards", 20'000,
        [](qsizetype parts) {
            return repeated(parts, [](const QByteArray &i) -> QByteArray {
                return "BEGIN:VCARD\r\nVERSION:3.0\r\nN:" + i + ";Ann\r\nTEL;TYPE=HOME:" + i + "\r\nEND:VCARD\r\n";
            });
        }},
    {"cards without END", 20'000,
        [](qsizetype parts) {
            return repeated(
                parts, [](const QByteArray &i) -> QByteArray { return "BEGIN:VCARD\r\nN:" + i + ";Ann\r\n"; });
        }},
    {"equal cards", 20'000,
        [](qsizetype parts) { return card(0, [](const QByteArray &) { return QByteArray(); }).repeated(parts); }},
    {"kept lines", 20'000,
        [](qsizetype parts) {
            return card(parts, [](const QByteArray &i) -> QByteArray { return "X-" + i + ":" + i + "\r\n"; });
        }},
    {"phones with more to keep", 20'000,
        [](qsizetype parts) {
            return card(parts, [](const QByteArray &i) -> QByteArray { return "TEL;TYPE=PREF,HOME:" + i + "\r\n"; });
        }},
    {"groups", 5'000,
        [](qsizetype parts) {
            return card(parts, [](const QByteArray &i) -> QByteArray {
                return "g" + i + ".EMAIL:" + i + "\r\ng" + i + ".X-ABLabel:x\r\n";
            });
        }},
    {"accounts", 5'000,
        [](qsizetype parts) {
            return card(
                parts, [](const QByteArray &i) -> QByteArray { return "X-AIM:" + i + "\r\nIMPP:aim:" + i + "\r\n"; });
        }},
    {"folds of a note", 200'000,
        [](qsizetype parts) { return "BEGIN:VCARD\nNOTE:" + QByteArray("\n x").repeated(parts) + "\nEND:VCARD\n"; }},
    {"lines of a picture", 50'000,
        [](qsizetype parts) {
            return "BEGIN:VCARD\nPHOTO;ENCODING=b:" + QByteArray("\nQUJDQUJD").repeated(parts) + "\n\nEND:VCARD\n";
        }},
    {"halves of UTF-16 characters", 20'000,
        [](qsizetype parts) -> QByteArray {
            QString text = QStringLiteral("BEGIN:VCARD\n");
            for (qsizetype i = 0; i < parts; ++i)
                text += QStringLiteral("NOTE:") + QChar(0xD800) + u'\n';
            return QStringEncoder(QStringEncoder::Utf16LE).encode(text + QStringLiteral("END:VCARD\n"));
        }},
    {"lines of JSON", 20'000, linesOfJson},
    {"unknown keys", 20'000,
        [](qsizetype parts) -> QByteArray {
            return R"({"note":{)" + repeated(parts, [](const QByteArray &i) { return '"' + i + "\":1,"; }) + "\"\":1}}";
        }},
    {"repeated keys", 20'000,
        [](qsizetype parts) -> QByteArray {
            return '{' + QByteArray(R"("note":"x",)").repeated(parts) + R"("note":"y"})";
        }},
    {"entries of JSON", 20'000,
        [](qsizetype parts) -> QByteArray {
            return R"({"email":[)" + repeated(parts, [](const QByteArray &i) -> QByteArray {
                return R"({"value":")" + i + "\"},";
            }) + R"({"value":"x"}]})";
        }},
});

template <typename Work> double secondsOf(Work work)
{
    const std::clock_t begin = std::clock();
    work();
    return double(std::clock() - begin) / CLOCKS_PER_SEC;
}

void import(ABAddressBook &book, const QByteArray &content)
{
    if (importFile(book, recordSource(content, formatOfContent(content)), QString()).error)
        qFatal("not imported");
}

struct Times
{
    static constexpr std::array<const char *, 3> kNames{"read", "import", "import again"};
    std::array<double, 3> seconds;
};

Times timesOf(const QByteArray &content)
{
    constexpr int kRounds = 3;
    Times least;
    least.seconds.fill(std::numeric_limits<double>::max());
    for (int round = 0; round < kRounds; ++round) {
        const auto book = *ABAddressBook::open(std::make_unique<MemoryStore>());
        const auto read = [&content] {
            const auto source = recordSource(content, formatOfContent(content));
            while (source->next().record) { }
        };
        const std::array seconds{
            secondsOf(read), secondsOf([&] { import(*book, content); }), secondsOf([&] { import(*book, content); })};
        for (std::size_t i = 0; i < seconds.size(); ++i)
            least.seconds[i] = std::min(least.seconds[i], seconds[i]);
    }
    return least;
}

/// Prints a line for each of the three things that are done with the file. False where one grows too fast.
bool growsWithTheFile(const Shape &shape)
{
    const std::array times{
        timesOf(shape.make(shape.parts)), timesOf(shape.make(2 * shape.parts)), timesOf(shape.make(4 * shape.parts))};
    bool isLinear = true;
    for (std::size_t i = 0; i < Times::kNames.size(); ++i) {
        const double growth = times[2].seconds[i] / std::max(times[0].seconds[i], 1e-6);
        const bool isTooMuch = growth > kMostGrowth && times[2].seconds[i] > kTooShortToTell;
        std::printf("%-28s %-13s %9.1f %9.1f %9.1f ms  %5.1f times%s\n", shape.name, Times::kNames[i],
            1e3 * times[0].seconds[i], 1e3 * times[1].seconds[i], 1e3 * times[2].seconds[i], growth,
            isTooMuch ? "  TOO MUCH" : "");
        isLinear = isLinear && !isTooMuch;
    }
    return isLinear;
}

} // namespace

int main()
{
    bool isLinear = true;
    for (const Shape &shape : kShapes)
        isLinear = growsWithTheFile(shape) && isLinear;
    return isLinear ? 0 : 1;
}
