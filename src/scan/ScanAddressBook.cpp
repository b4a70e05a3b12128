// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/ScanAddressBook.h"

#include "base/Job.h"
#include "scan/DuplicateRules.h"
#include "scan/Finders.h"
#include "scan/ScanLog.h"

#include <QElapsedTimer>

#include <list>

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
    // Each comparison of people runs beside the one pass that judges them one by one.
    struct Comparison
    {
        std::size_t place; // of its condition
        Findings findings = {};
        Job job = {};
    };
    std::list<Comparison> comparisons;
    for (std::size_t place = 0; place < conditions.size(); ++place) {
        if (judgesSingleRecords(conditions[place]))
            continue;
        Comparison &comparison = comparisons.emplace_back(place);
        comparison.job.start([&findings = comparison.findings, condition = conditions[place], &people] {
            findings = timedFind(condition, *people);
        });
    }
    std::vector<Findings> findings = findInOnePass(conditions, *people);
    for (Comparison &comparison : comparisons) {
        comparison.job.wait();
        findings[comparison.place] = std::move(comparison.findings);
    }
    ScanResult result;
    for (std::size_t place = 0; place < conditions.size(); ++place)
        result.insert(conditions[place], std::move(findings[place]));
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
