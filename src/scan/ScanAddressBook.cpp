// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/ScanAddressBook.h"

#include "base/Job.h"
#include "scan/DuplicateRules.h"
#include "scan/Finders.h"
#include "scan/ScanLog.h"

#include <QElapsedTimer>

#include <algorithm>

Q_LOGGING_CATEGORY(lcScan, "peoplenook.scan")
Q_LOGGING_CATEGORY(lcScanTrace, "peoplenook.scan.trace", QtWarningMsg)

namespace {

PeopleSnapshot currentPeople()
{
    const auto book = ABAddressBook::sharedAddressBook();
    return book ? book->snapshot() : std::make_shared<const std::vector<PersonSnapshot>>();
}

Findings timedFind(Condition condition, People people)
{
    QElapsedTimer timer;
    timer.start();
    Findings findings = find(condition, people);
    if (condition == Condition::DuplicateContacts)
        qCDebug(lcScan, "扫描花费的时间：%f", double(timer.nsecsElapsed()) / 1e9);
    return findings;
}

} // namespace

ScanAddressBook::ScanAddressBook(ScanDelegate &delegate, QObject *parent) : QObject(parent), m_delegate(delegate)
{
    qRegisterMetaType<ScanResult>();
}

ScanResult ScanAddressBook::examine(const QStringList &selectedTitles)
{
    const PeopleSnapshot people = currentPeople();
    std::vector<Condition> conditions;
    for (const QString &title : selectedTitles) {
        if (const auto condition = conditionTitled(title))
            conditions.push_back(*condition);
    }
    // Runs beside the others, which write lines and do it in order.
    Findings sharing;
    Job comparison;
    if (std::ranges::find(conditions, Condition::ShareEmail) != conditions.end())
        comparison.start([&sharing, &people] { sharing = sharedEmails(*people); });
    ScanResult result;
    for (auto next = conditions.cbegin(); next != conditions.cend();) {
        const auto endOfPass = std::find_if_not(next, conditions.cend(), judgesSingleRecords);
        if (next != endOfPass) {
            for (Findings &findings : findInOnePass({next, endOfPass}, *people))
                result.insert(*next++, std::move(findings));
            continue;
        }
        if (*next == Condition::ShareEmail) {
            comparison.wait();
            result.insert(*next, sharing);
        } else {
            result.insert(*next, timedFind(*next, *people));
        }
        ++next;
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
    m_delegate.alertPanel().runAlertPanel(QStringLiteral("Notes"), kNothingFound, QStringLiteral("OK"), QString());
    m_delegate.makeButtonEnable();
}

std::vector<ABPersonPtr> ScanAddressBook::peopleFor(Condition condition)
{
    return std::get<std::vector<ABPersonPtr>>(find(condition, *currentPeople()));
}

std::vector<EmailMatch> ScanAddressBook::findDuplicateEmailInContacts() const
{
    return std::get<std::vector<EmailMatch>>(sharedEmails(*currentPeople()));
}

std::vector<ABPersonPtr> ScanAddressBook::findDuplicatesContacts() const
{
    return std::get<std::vector<ABPersonPtr>>(peopleOfSameName(*currentPeople()));
}
