// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/ScanAddressBook.h"

#include "scan/DuplicateRules.h"
#include "scan/FetchAhead.h"
#include "scan/NameRules.h"
#include "scan/ScanLog.h"
#include "scan/TextRules.h"

#include <QElapsedTimer>

#include <algorithm>
#include <array>

namespace {

PeopleSnapshot currentPeople()
{
    const auto book = ABAddressBook::sharedAddressBook();
    return book ? book->snapshot() : std::make_shared<const std::vector<PersonSnapshot>>();
}

/// Few enough that what one finder fetched is still in the cache for the next.
constexpr std::size_t kBlockSize = 64;

/// Empty behind the last block.
People blockOf(People people, std::size_t number)
{
    const std::size_t begin = std::min(number * kBlockSize, people.size());
    return people.subspan(begin, std::min(kBlockSize, people.size() - begin));
}

struct FinderRow
{
    Condition condition;
    FinderPtr (*make)(std::size_t peopleCount);
};

template <auto make> FinderPtr ofOnePerson(std::size_t)
{
    return make();
}

template <ABProperty property> FinderPtr ofValues(std::size_t)
{
    return repeatedValueFinder(property);
}

constexpr std::array kFinders{
    FinderRow{Condition::SingleName, ofOnePerson<incompleteNameFinder>},
    FinderRow{Condition::DupAddress, ofValues<kABAddressProperty>},
    FinderRow{Condition::InvalidChar, ofOnePerson<invalidCharacterFinder>},
    FinderRow{Condition::SpaceInFirstName, ofOnePerson<spaceInFirstNameFinder>},
    FinderRow{Condition::ShareEmail, sharedEmailFinder},
    FinderRow{Condition::DuplicateContacts, repeatedNameFinder},
    FinderRow{Condition::EmptyNotes, ofOnePerson<noteOfSpacesFinder>},
    FinderRow{Condition::EmptyNickname, ofOnePerson<nicknameOfSpacesFinder>},
    FinderRow{Condition::DupPhone, ofValues<kABPhoneProperty>},
    FinderRow{Condition::DupEmail, ofValues<kABEmailProperty>},
    FinderRow{Condition::UnusualTitle, ofOnePerson<unusualTitleFinder>},
    FinderRow{Condition::UnusualSuffix, ofOnePerson<unusualSuffixFinder>},
    FinderRow{Condition::BlankName, ofOnePerson<blankNameFinder>},
};

auto makerOf(Condition condition)
{
    return std::ranges::find(kFinders, condition, &FinderRow::condition)->make;
}

/// Adds the time of its life to a sum.
class Stopwatch
{
public:
    explicit Stopwatch(qint64 &nanoseconds) : m_nanoseconds(nanoseconds) { m_timer.start(); }
    ~Stopwatch() { m_nanoseconds += m_timer.nsecsElapsed(); }
    Stopwatch(const Stopwatch &) = delete;
    Stopwatch &operator=(const Stopwatch &) = delete;

private:
    qint64 &m_nanoseconds;
    QElapsedTimer m_timer;
};

/// A finder at work in a scan, and how long it took so far.
struct Run
{
    Condition condition;
    FinderPtr finder;
    qint64 nanoseconds = 0;
};

/// The conditions with these titles, in their order; other texts are passed over.
std::vector<Run> runsFor(const QStringList &titles, std::size_t peopleCount)
{
    std::vector<Run> runs;
    for (const QString &title : titles) {
        if (const auto condition = conditionTitled(title))
            runs.push_back({*condition, makerOf(*condition)(peopleCount)});
    }
    return runs;
}

/// What a finder finds among the current people.
template <typename Found> Found findingsOf(FinderPtr (*make)(std::size_t))
{
    const PeopleSnapshot people = currentPeople();
    const FinderPtr finder = make(people->size());
    finder->look(*people);
    return std::get<Found>(finder->takeFindings());
}

std::vector<ABPersonPtr> peopleFor(Condition condition)
{
    return findingsOf<std::vector<ABPersonPtr>>(makerOf(condition));
}

} // namespace

ScanAddressBook::ScanAddressBook(ScanDelegate &delegate, QObject *parent) : QObject(parent), m_delegate(delegate)
{
    qRegisterMetaType<ScanResult>();
}

ScanResult ScanAddressBook::examine(const QStringList &selectedTitles)
{
    const PeopleSnapshot snapshot = currentPeople();
    const People people = *snapshot;
    std::vector<Run> runs = runsFor(selectedTitles, people.size());
    for (std::size_t block = 0; block * kBlockSize < people.size(); ++block) {
        FetchAhead::records(blockOf(people, block + 3));
        FetchAhead::values(blockOf(people, block + 2));
        FetchAhead::entries(blockOf(people, block + 1));
        for (Run &run : runs) {
            const Stopwatch stopwatch(run.nanoseconds);
            run.finder->look(blockOf(people, block));
        }
    }
    ScanResult result;
    for (Run &run : runs) {
        Findings findings;
        {
            const Stopwatch stopwatch(run.nanoseconds);
            findings = run.finder->takeFindings();
        }
        if (run.condition == Condition::DuplicateContacts)
            qCDebug(lcScan, "扫描花费的时间：%f", double(run.nanoseconds) / 1e9);
        result.insert(run.condition, std::move(findings));
    }
    return result;
}

void ScanAddressBook::scanEntireAddressBook(const QStringList &selectedTitles)
{
    const ScanResult result = examine(selectedTitles);
    if (!result.isEmpty()) {
        Q_EMIT scanOver(result);
        return;
    }
    m_delegate.closeProgress();
    m_delegate.alertPanel().runAlertPanel(QStringLiteral("Notes"),
        QStringLiteral("Scan completed, no contact matches the condition!"), QStringLiteral("OK"), QString());
    m_delegate.makeButtonEnable();
}

std::vector<ABPersonPtr> ScanAddressBook::scanAllAddressBookOnlyOneName() const
{
    return peopleFor(Condition::SingleName);
}

std::vector<ABPersonPtr> ScanAddressBook::findDuplicateAddressInOnePerson() const
{
    return peopleFor(Condition::DupAddress);
}

std::vector<ABPersonPtr> ScanAddressBook::findInvalidCharactersInContacts() const
{
    return peopleFor(Condition::InvalidChar);
}

std::vector<ABPersonPtr> ScanAddressBook::scanAllAddressBookFirstNameHaveSpace() const
{
    return peopleFor(Condition::SpaceInFirstName);
}

std::vector<EmailMatch> ScanAddressBook::findDuplicateEmailInContacts() const
{
    return findingsOf<std::vector<EmailMatch>>(sharedEmailFinder);
}

std::vector<ABPersonPtr> ScanAddressBook::test() const
{
    return peopleFor(Condition::DuplicateContacts);
}

std::vector<ABPersonPtr> ScanAddressBook::findDuplicatesContacts() const
{
    return findingsOf<std::vector<ABPersonPtr>>(sameNameFinder);
}

std::vector<ABPersonPtr> ScanAddressBook::findEmptyNotes() const
{
    return peopleFor(Condition::EmptyNotes);
}

std::vector<ABPersonPtr> ScanAddressBook::findEmptyNickname() const
{
    return peopleFor(Condition::EmptyNickname);
}

std::vector<ABPersonPtr> ScanAddressBook::findDuplicatePhonesInOnePerson() const
{
    return peopleFor(Condition::DupPhone);
}

std::vector<ABPersonPtr> ScanAddressBook::findDuplicateEmailInOnePerson() const
{
    return peopleFor(Condition::DupEmail);
}

std::vector<ABPersonPtr> ScanAddressBook::findUnusualTitleInContacts() const
{
    return peopleFor(Condition::UnusualTitle);
}

std::vector<ABPersonPtr> ScanAddressBook::findUnusualSuffixInContacts() const
{
    return peopleFor(Condition::UnusualSuffix);
}

std::vector<ABPersonPtr> ScanAddressBook::findBlankNameInContacts() const
{
    return peopleFor(Condition::BlankName);
}
