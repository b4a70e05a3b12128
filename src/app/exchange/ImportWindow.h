// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/activity/ActivityLog.h"
#include "base/Job.h"

#include <QDialog>
#include <QSet>

#include <memory>

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class WrappedText;

/// Imports files while it is open: shows progress, can be cancelled, and lists what was skipped and why. Each file is
/// saved in one step; a file that is cancelled or cannot be saved leaves nothing.
class ImportWindow : public QDialog
{
    Q_OBJECT

public:
    /// Begins immediately. @p log must outlive the window.
    ImportWindow(const QStringList &paths, ActivityLog &log, QWidget *parent);
    ~ImportWindow() override;

    QString summary() const;
    QPushButton *likelyButton() const { return m_likely; }

Q_SIGNALS:
    /// At least one contact was added or changed.
    void imported();
    void ended();
    void likelyRequested(const QSet<QString> &uids); ///< of new contacts like ones that were there

protected:
    void reject() override;

private:
    struct Report;
    Report run(const QStringList &paths, const std::stop_token &isCancelled);
    void showProgress(const QString &path, int percent);
    void showReport(const Report &report);
    void lookForLikely(const std::shared_ptr<const QSet<QString>> &before);

    ActivityLog &m_log;
    WrappedText *m_headline;
    WrappedText *m_text;
    QProgressBar *m_bar;
    QListWidget *m_skipped;
    QWidget *m_likelyStrip; ///< hidden where the new contacts are like none
    QLabel *m_likelyText;
    QPushButton *m_likely;
    QPushButton *m_button;
    bool m_isRunning = true;
    Job m_likeness;
    Job m_job; // last: uses the members above
};
