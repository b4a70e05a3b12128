// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "contacts/book/ABAddressBook.h"

#include <QObject>

/// Takes back what this window changed in the address book, step by step, and repeats it: each step is a cause of the
/// history, or what was ignored or brought back in one go. For the main thread, which it never keeps waiting.
class UndoSteps : public QObject
{
    Q_OBJECT

public:
    ~UndoSteps() override;

    /// In place of the one before, whose steps are forgotten. Not null.
    void watch(std::shared_ptr<ABAddressBook> book);
    /// They are ignored by now, or no longer. Not empty.
    void noteIgnored(const std::vector<Ignored> &entries, bool isIgnored);
    bool canUndo() const { return !m_done.empty() && !m_isBusy; }
    bool canRedo() const { return !m_undone.empty() && !m_isBusy; }
    void undo() { takeBack(m_done, m_undone); }
    void redo() { takeBack(m_undone, m_done); }

Q_SIGNALS:
    void changed(); ///< what can be undone and redone
    /// A step can be undone by now; the message is empty for repairs, whose windows say more.
    void noted(const QString &message);
    /// The people with these uids are as before the step, or after it again.
    void applied(const QStringList &uids, const QString &message);
    void failed(const QString &message);

private:
    struct Step
    {
        QString causeId; ///< whose changes are to be taken back
        QString what;
        std::vector<Ignored> ignored = {}; ///< this instead; the id is its own
        bool isIgnored = true; ///< else it was brought back
    };
    using Steps = std::vector<Step>;

    void note(const ChangeCausePtr &cause);
    void add(const Step &step, const QString &message);
    void takeBack(Steps &from, Steps &to);
    void finish(Steps &from, Steps &to, const Step &step, const QString &restoringId, const Result<QStringList> &uids);

    std::shared_ptr<ABAddressBook> m_book;
    Steps m_done;
    Steps m_undone;
    QString m_ownCauseId; // of the newest step that was taken back or repeated
    bool m_isBusy = false; // until the end of the job is delivered
    Job m_job;
};
