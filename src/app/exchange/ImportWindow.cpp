// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/exchange/ImportWindow.h"

#include "app/look/Controls.h"
#include "app/look/Counted.h"
#include "contacts/book/RecordImporter.h"
#include "contacts/stores/open/OutsideFile.h"
#include "fix/IgnoredFindings.h"
#include "likeness/LikelyDuplicates.h"

#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

struct ImportWindow::Report
{
    qint64 imported = 0;
    qint64 alreadyThere = 0;
    bool cancelled = false;
    QStringList skipped; ///< file, line and reason
    QStringList failures;
    std::shared_ptr<const QSet<QString>> before; ///< the uids that were there
};

namespace {

std::shared_ptr<const QSet<QString>> uidsIn(const ABAddressBook &book)
{
    const PeopleSnapshot people = book.snapshot();
    auto uids = std::make_shared<QSet<QString>>();
    for (const auto &[person, record] : *people)
        uids->insert(person->uniqueId());
    return uids;
}

/// Of the people who were not there before: those who look like one who was.
struct NewLikenesses
{
    QSet<QString> uids;
    qsizetype added = 0;
};

NewLikenesses newLikenesses(const QSet<QString> &before, const QString &region, const std::stop_token &isCancelled)
{
    NewLikenesses found;
    const auto book = ABAddressBook::sharedAddressBook();
    const auto ignored = book ? IgnoredFindings::of(*book) : Result<IgnoredFindings>(noAddressBook());
    if (!ignored)
        return found;
    const PeopleSnapshot people = book->snapshot();
    found.added = std::ranges::count_if(
        *people, [&](const PersonSnapshot &each) { return !before.contains(each.person->uniqueId()); });
    const auto likely = findLikelyDuplicates(
        *people, LikenessGrade::Likely, region, [&](double) { return !isCancelled.stop_requested(); },
        differenceAmong(*people, *ignored));
    for (const LikelyGroup &group : likely.groups) {
        QStringList added;
        for (const std::size_t member : group.members) {
            const QString &uid = (*people)[member].person->uniqueId();
            if (!before.contains(uid))
                added += uid;
        }
        if (added.size() < qsizetype(group.members.size()))
            found.uids += QSet<QString>(added.begin(), added.end());
    }
    return found;
}

} // namespace

ImportWindow::ImportWindow(const QStringList &paths, ActivityLog &log, QWidget *parent)
    : QDialog(parent)
    , m_log(log)
    , m_headline(new WrappedText(Qt::LeftToRight, this))
    , m_text(new WrappedText(Qt::LeftToRight, this))
    , m_bar(new QProgressBar(this))
    , m_skipped(new QListWidget(this))
    , m_likelyStrip(new QWidget(this))
    , m_likelyText(new QLabel(m_likelyStrip))
    , m_likely(new QPushButton(tr("Show Them ..."), m_likelyStrip))
    , m_button(new QPushButton(tr("Cancel"), this))
{
    m_headline->setAccessibleName(tr("Result of the import"));
    makeHeadline(m_headline);
    setTextColour(m_text, ColourRole::Quiet);
    m_text->hide();
    setWindowTitle(tr("Import"));
    setFirstSize(*this, {560, 320});
    m_bar->setAccessibleName(tr("Import progress"));
    m_bar->setRange(0, 100);
    m_skipped->setAccessibleName(tr("What was skipped, and why"));
    m_skipped->setWordWrap(true);
    m_skipped->hide();
    connect(m_button, &QPushButton::clicked, this, &ImportWindow::reject);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addWidget(m_headline);
    layout->addWidget(m_text);
    layout->addWidget(m_bar);
    layout->addWidget(m_skipped, 1);
    layout->addStretch(); // as long as there is no list
    auto *strip = innerLayout<QHBoxLayout>(m_likelyStrip, 8);
    strip->addWidget(m_likelyText, 1);
    strip->addWidget(m_likely);
    layout->addWidget(m_likelyStrip);
    layout->addWidget(m_button, 0, Qt::AlignRight);
    m_likelyStrip->hide();
    m_job.start([this, paths](const std::stop_token &isCancelled) { return run(paths, isCancelled); },
        [this](const Report &report) { showReport(report); });
}

ImportWindow::~ImportWindow() = default;

QString ImportWindow::summary() const
{
    return m_text->text().isEmpty() ? m_headline->text() : m_headline->text() + u'\n' + m_text->text();
}

void ImportWindow::reject()
{
    if (!m_isRunning) {
        QDialog::reject(); // close() would come back here, and leave the window open
        return;
    }
    m_button->setEnabled(false);
    m_job.stop();
}

ImportWindow::Report ImportWindow::run(const QStringList &paths, const std::stop_token &isCancelled)
{
    Report report;
    const auto book = ABAddressBook::sharedAddressBook();
    if (!book)
        report.failures += tr("Nothing was imported: no address book is open.");
    else
        report.before = uidsIn(*book);
    for (const QString &path : book ? paths : QStringList()) {
        const QString name = QFileInfo(path).fileName();
        auto content = readOutsideFile(path, book->file());
        if (!content) {
            report.failures += content.error().description();
            continue;
        }
        const auto progress = [&](qint64 done, qint64 total) {
            const int percent = total > 0 ? int(100 * done / total) : 100;
            Job::deliver(this, [this, name, percent] { showProgress(name, percent); });
            return !isCancelled.stop_requested();
        };
        progress(0, 1);
        auto source = recordSource(*content, formatOfContent(*content));
        content = QByteArray(); // goes with the source, before the save
        const ImportReport imported = importFile(*book, std::move(source), name, progress);
        report.imported += imported.imported;
        report.alreadyThere += imported.alreadyThere;
        for (const ImportProblem &problem : imported.problems)
            report.skipped += QStringLiteral("%1:%2: %3").arg(name).arg(problem.line).arg(problem.reason);
        if (imported.error)
            report.failures += tr("%1: not imported: %2").arg(path, imported.error->text);
        report.cancelled = imported.cancelled || isCancelled.stop_requested();
        if (report.cancelled)
            break;
    }
    return report;
}

void ImportWindow::showProgress(const QString &path, int percent)
{
    m_headline->setText(tr("Reading %1 ...").arg(path));
    m_bar->setValue(percent);
}

void ImportWindow::showReport(const Report &report)
{
    m_isRunning = false;
    QStringList sentences;
    if (report.imported > 0 || report.failures.isEmpty())
        sentences += tr("Imported %1.").arg(counted(report.imported, tr("contact"), tr("contacts")));
    if (report.alreadyThere > 0)
        sentences += tr("Already there: %1.").arg(counted(report.alreadyThere, tr("contact"), tr("contacts")));
    if (!report.skipped.isEmpty())
        sentences += tr("Skipped: %1, for these reasons:")
                         .arg(counted(report.skipped.size(), tr("line or card"), tr("lines or cards")));
    if (report.cancelled)
        sentences += tr("Cancelled; the file that was being read was left out.");
    const QStringList all = sentences + report.failures;
    m_headline->setText(all.front());
    m_text->setText(all.sliced(1).join(u'\n'));
    m_text->setVisible(all.size() > 1);
    if (!sentences.isEmpty())
        m_log.append(ActivityLog::Kind::Done, sentences.front());
    for (const QString &failure : report.failures)
        m_log.append(ActivityLog::Kind::Failure, failure);
    for (const QString &line : report.skipped)
        m_log.append(ActivityLog::Kind::Done, tr("Skipped: %1").arg(line));
    m_bar->hide();
    m_skipped->addItems(report.skipped);
    m_skipped->setVisible(!report.skipped.isEmpty());
    if (report.skipped.isEmpty()) // the window has room for a list
        resize(width(), layout()->totalSizeHint().height());
    m_button->setText(tr("Close"));
    m_button->setEnabled(true);
    m_button->setFocus();
    if (report.imported > 0) {
        lookForLikely(report.before);
        Q_EMIT imported();
    }
    Q_EMIT ended();
}

void ImportWindow::lookForLikely(const std::shared_ptr<const QSet<QString>> &before)
{
    if (before->isEmpty())
        return;
    m_likeness.start([before, region = regionOfUser()](
                         const std::stop_token &isCancelled) { return newLikenesses(*before, region, isCancelled); },
        [this](const NewLikenesses &found) {
            if (found.uids.isEmpty())
                return;
            m_likelyText->setText((found.uids.size() == 1 ? tr("%L1 of the %2 looks like one you have.")
                                                          : tr("%L1 of the %2 look like ones you have."))
                                      .arg(found.uids.size())
                                      .arg(counted(found.added, tr("new contact"), tr("new contacts"))));
            connect(m_likely, &QPushButton::clicked, this, [this, uids = found.uids] { Q_EMIT likelyRequested(uids); });
            m_likelyStrip->show();
            if (m_skipped->isHidden())
                resize(width(), layout()->totalSizeHint().height());
        });
}
