// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "scan/ScanResult.h"

#include <QObject>
#include <QStringList>

#include <memory>

/// What a scan needs from the program. Called on the scanning thread; implementations with windows switch to the main
/// thread.
class ScanDelegate
{
public:
    virtual ~ScanDelegate() = default;

    /// Returns when the progress display is closed.
    virtual void closeProgress() = 0;
    /// Need not wait.
    virtual void makeButtonEnable() = 0;
    virtual AlertPanel &alertPanel() = 0;
};

inline constexpr QLatin1StringView kNothingFound{"Scan completed, no contact matches the condition!"};

/// Looks for malformed, incomplete or duplicate contacts in the shared address book, without changing anything. Any
/// thread; each call uses the people as they are when it begins.
class ScanAddressBook : public QObject
{
    Q_OBJECT

public:
    /// @p delegate must outlive the scanner.
    explicit ScanAddressBook(ScanDelegate &delegate, QObject *parent = nullptr);

    /// Runs the conditions with these titles in this order, ignoring other texts. Ends with scanOver() or, if nothing
    /// was found, with a message to the user.
    void scanEntireAddressBook(const QStringList &selectedTitles);

    /// Returns what scanEntireAddressBook() would find, without any other effect.
    static ScanResult examine(const QStringList &selectedTitles);

    std::vector<ABPersonPtr> scanAllAddressBookOnlyOneName() const { return peopleFor(Condition::SingleName); }
    std::vector<ABPersonPtr> findDuplicateAddressInOnePerson() const { return peopleFor(Condition::DupAddress); }
    std::vector<ABPersonPtr> findInvalidCharactersInContacts() const { return peopleFor(Condition::InvalidChar); }
    std::vector<ABPersonPtr> scanAllAddressBookFirstNameHaveSpace() const
    {
        return peopleFor(Condition::SpaceInFirstName);
    }
    std::vector<EmailMatch> findDuplicateEmailInContacts() const;
    /// The finder of the condition DuplicateContacts.
    std::vector<ABPersonPtr> test() const { return peopleFor(Condition::DuplicateContacts); }
    /// Complete groups of people with the same first and last name; no condition uses it.
    std::vector<ABPersonPtr> findDuplicatesContacts() const;
    std::vector<ABPersonPtr> findEmptyNotes() const { return peopleFor(Condition::EmptyNotes); }
    std::vector<ABPersonPtr> findEmptyNickname() const { return peopleFor(Condition::EmptyNickname); }
    std::vector<ABPersonPtr> findDuplicatePhonesInOnePerson() const { return peopleFor(Condition::DupPhone); }
    std::vector<ABPersonPtr> findDuplicateEmailInOnePerson() const { return peopleFor(Condition::DupEmail); }
    std::vector<ABPersonPtr> findUnusualTitleInContacts() const { return peopleFor(Condition::UnusualTitle); }
    std::vector<ABPersonPtr> findUnusualSuffixInContacts() const { return peopleFor(Condition::UnusualSuffix); }
    std::vector<ABPersonPtr> findBlankNameInContacts() const { return peopleFor(Condition::BlankName); }

    /// Holds a result for sharing; a scan neither reads nor sets it.
    std::shared_ptr<ScanResult> allResult() const { return m_allResult; }
    void setAllResult(std::shared_ptr<ScanResult> result) { m_allResult = std::move(result); }

Q_SIGNALS:
    /// Emitted on the scanning thread; the result is never empty.
    void scanOver(const ScanResult &result);

private:
    static std::vector<ABPersonPtr> peopleFor(Condition condition);

    ScanDelegate &m_delegate;
    std::shared_ptr<ScanResult> m_allResult;
};
