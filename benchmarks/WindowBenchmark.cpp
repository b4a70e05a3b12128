// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "app/look/CalmStyle.h"
#include "app/results/FixAllDialog.h"
#include "app/results/ResultsView.h"
#include "app/start/AppDelegate.h"
#include "app/table/ContactTableView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QProcess>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <utility>

// What somebody at the windows waits for, with 100,000 contacts. Needs a display. Prints one line a figure; the command
// line that it compares with must lie beside the application: give its path.

namespace {

constexpr qint64 kPeople = 100'000;

double milliseconds(qint64 nanoseconds)
{
    return double(nanoseconds) / 1e6;
}

void report(const char *what, double value, const char *unit = "ms")
{
    std::printf("%-60s %8.1f %s\n", what, value, unit);
    std::fflush(stdout);
}

double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1000 + double(now.tv_nsec) / 1e6;
}

/// How late an event came at most while it lives: notes when a timer is late, which rests between its turns as somebody
/// at the windows does.
class Heartbeat
{
public:
    Heartbeat()
    {
        m_clock.start();
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            m_longest = std::max(m_longest, m_clock.nsecsElapsed() - qint64(kInterval) * 1'000'000);
            m_longestOfProcessor = std::max(m_longestOfProcessor, processorTime() - m_begin);
            m_clock.start();
            m_begin = processorTime();
        });
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.start(kInterval);
    }
    /// The second line is for busy machines: what this thread itself did at most between two turns.
    void report(const char *what) const
    {
        ::report(what, milliseconds(m_longest));
        ::report("    processor time", m_longestOfProcessor);
    }

private:
    static constexpr int kInterval = 2; // milliseconds

    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_longest = 0;
    double m_begin = processorTime();
    double m_longestOfProcessor = 0;
};

template <typename Condition> void waitUntil(Condition isReached)
{
    if (!QTest::qWaitFor(isReached, 60'000))
        qFatal("waited too long");
}

/// The median of several runs of a program, in milliseconds.
double timeOf(const QString &program, const QStringList &arguments)
{
    std::vector<double> times;
    for (int i = 0; i < 5; ++i) {
        QElapsedTimer timer;
        timer.start();
        if (QProcess::execute(program, arguments) < 0)
            qFatal("%s does not start", qUtf8Printable(program));
        times.push_back(milliseconds(timer.nsecsElapsed()));
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
}

/// Whether a widget was painted since it was asked last.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget &widget) { widget.installEventFilter(this); }
    bool takePainted() { return std::exchange(m_isPainted, false); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        m_isPainted = m_isPainted || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_isPainted = false;
};

/// Until the rows are painted.
void reportAnswer(const char *what, QLineEdit &field, QWidget &viewport)
{
    PaintWatch rows(viewport);
    double longest = 0;
    double longestOfProcessor = 0;
    for (const char *text : {"a", "an", "ann", "ann 1", "", "z", "example.com", ""}) {
        QElapsedTimer timer;
        timer.start();
        const double begin = processorTime();
        field.setText(QString::fromLatin1(text));
        rows.takePainted();
        while (!rows.takePainted())
            QCoreApplication::processEvents();
        longest = std::max(longest, milliseconds(timer.nsecsElapsed()));
        longestOfProcessor = std::max(longestOfProcessor, processorTime() - begin);
    }
    report(what, longest);
    report("    processor time", longestOfProcessor);
}

void typing(AppDelegate &app)
{
    const ContactTableView &contacts = *app.mainWindow().contactTable();
    reportAnswer("a text in the search field, until the rows are painted", *contacts.searchField(),
        *contacts.table()->viewport());
}

bool isFilled(AppDelegate &app)
{
    return app.loadContactsViewController().numberOfRowsInTableView() == kPeople;
}

/// As the application starts; ends as soon as the table shows everybody.
int startOnly(const QString &book)
{
    AppDelegate app;
    app.applicationDidFinishLaunching(book);
    waitUntil([&app] { return isFilled(app); });
    app.mainWindow().contactTable()->table()->viewport()->repaint();
    std::_Exit(0);
}

void exportOnce(AppDelegate &app, const char *format, const QString &folder)
{
    class Chosen : public ExportPanel
    {
    public:
        explicit Chosen(ExportChoice choice) : m_choice(std::move(choice)) { }
        void beginSheet(std::function<void(const std::optional<ExportChoice> &)> done) override { done(m_choice); }

    private:
        ExportChoice m_choice;
    };
    Chosen panel({folder, QString::fromLatin1(format), ExportContact::kAllFieldsTag});
    ExportContact exporter(panel);
    QSignalSpy finished(&exporter, &ExportContact::exportFinished);
    exporter.setLoadContactsViewController(&app.loadContactsViewController());
    exporter.setExportArray(app.loadContactsViewController().getTableViewDataArray());
    exporter.setIsExportAllPeople(true);
    const Heartbeat heartbeat;
    exporter.startExport();
    waitUntil([&finished] { return !finished.isEmpty(); });
    heartbeat.report(qPrintable(QStringLiteral("longest wait of an event: ") + QString::fromLatin1(format)));
}

void waits(AppDelegate &app)
{
    {
        const Heartbeat heartbeat;
        QSignalSpy loaded(&app.loadContactsViewController(), &LoadContactsViewController::tableViewDataChange);
        app.loadClicked();
        waitUntil([&loaded] { return !loaded.isEmpty(); });
        QTest::qWait(50);
        heartbeat.report("longest wait of an event: load");
    }
    {
        const Heartbeat heartbeat;
        app.scanClicled();
        waitUntil([&app] { return app.outlineViewController() && app.outlineViewController()->selectedItem(); });
        QTest::qWait(100); // they are painted
        heartbeat.report("longest wait of an event: scan of all conditions");
        report("    findings", double(app.outlineViewController()->findingCount()), "");
        app.scans().reloadUI();
        waitUntil([&app] { return !app.mainWindow().results(); });
    }
    const QTemporaryDir folder;
    for (const char *format : {"Save to CSV", "Save to HTML", "Save to Excel", "Save to Docx"})
        exportOnce(app, format, folder.path());
}

/// Repairs all findings of a group.
void fixAll(AppDelegate &app, QLatin1StringView group, OptionGroup options, QLatin1StringView option)
{
    OutlineViewController &results = *app.outlineViewController();
    const auto found = std::ranges::find_if(results.rootNodes(), [&](const auto &row) { return row->name() == group; });
    results.chooseOption(options, option);
    results.selectItem((*found)->childAtIndex(0));
    const qsizetype count = (*found)->childrenCount();
    QElapsedTimer timer;
    double untilAsked = 0;
    QTimer::singleShot(0, [&] {
        untilAsked = milliseconds(timer.nsecsElapsed());
        app.mainWindow().results()->findChild<FixAllDialog *>()->accept();
        timer.start();
    });
    const Heartbeat heartbeat;
    timer.start();
    app.mainWindow().results()->fixAll();
    report(qPrintable(QStringLiteral("Fix All: ") + group), milliseconds(timer.nsecsElapsed()));
    report("    findings", double(count), "");
    report("    until its question is shown", untilAsked);
    heartbeat.report("    longest wait of an event");
}

void repairs(AppDelegate &app)
{
    app.scanClicled();
    waitUntil([&app] { return app.mainWindow().results() && app.outlineViewController()->selectedItem(); });
    const ResultsView &results = *app.mainWindow().results();
    QTest::qWait(500); // the texts for the filter are collected
    reportAnswer("a text in the filter of the findings, until the rows are painted", *results.filterField(),
        *results.outlineView()->viewport());
    fixAll(app, QLatin1StringView("Unusual Title"), OptionGroup::BadTitle, kRemoveTheTitle);
    fixAll(app, QLatin1StringView("Duplicate contacts"), OptionGroup::DupContact, kMergeContacts);
    app.scans().reloadUI();
    waitUntil([&app] { return !app.mainWindow().results(); });
}

/// Each frame shows rows that no frame before it showed.
void scrolling(AppDelegate &app)
{
    QTableView *table = app.mainWindow().contactTable()->table();
    constexpr int kFrames = 500;
    std::vector<double> times;
    double longestOfProcessor = 0;
    for (int i = 0; i < kFrames; ++i) {
        table->verticalScrollBar()->setValue(i * 200);
        QElapsedTimer timer;
        timer.start();
        const double begin = processorTime();
        table->viewport()->repaint();
        longestOfProcessor = std::max(longestOfProcessor, processorTime() - begin);
        times.push_back(milliseconds(timer.nsecsElapsed()));
    }
    std::ranges::sort(times);
    report("a painted frame of the table, the median", times[kFrames / 2]);
    report("    of 100 the 99th", times[kFrames * 99 / 100]);
    report("    the longest", times.back());
    report("    the longest, processor time", longestOfProcessor);
}

void idling()
{
    constexpr int kSeconds = 10;
    QTest::qWait(2000); // what is due still
    const std::clock_t begin = std::clock();
    QTimer end;
    end.setSingleShot(true);
    QEventLoop loop;
    QObject::connect(&end, &QTimer::timeout, &loop, &QEventLoop::quit);
    end.start(kSeconds * 1000);
    loop.exec();
    report("processor time of ten idle seconds", 1000.0 * double(std::clock() - begin) / CLOCKS_PER_SEC);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    QApplication::setStyle(std::make_unique<CalmStyle>().release()); // takes it over
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == QStringLiteral("--start"))
        return startOnly(arguments[2]);
    if (arguments.size() != 2) {
        std::fputs("usage: WindowBenchmark PEOPLENOOK-CLI\n", stderr);
        return 2;
    }
    const QString book = generatedBook(kPeople);
    const double bare = timeOf(
        arguments[1], {QStringLiteral("--address-book"), book, QStringLiteral("people"), QStringLiteral("nobody")});
    const double start = timeOf(QApplication::applicationFilePath(), {QStringLiteral("--start"), book});
    report("the command line opens 100,000 contacts", bare);
    report("the application starts, until its table is filled", start);
    report("    times", start / bare, "");
    AppDelegate app;
    app.applicationDidFinishLaunching(book);
    waitUntil([&app] { return isFilled(app); });
    QTest::qWait(2000); // the texts for the search field are collected
    typing(app);
    scrolling(app);
    waits(app);
    repairs(app);
    idling();
    return 0;
}
