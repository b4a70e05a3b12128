// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "app/AppDelegate.h"
#include "app/CalmStyle.h"
#include "app/ContactTableView.h"
#include "app/ResultsView.h"

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

/// The longest time that an event had to wait while it lives: a timer that is always due and notes when it is late.
class Heartbeat
{
public:
    Heartbeat()
    {
        m_clock.start();
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            m_longest = std::max(m_longest, m_clock.nsecsElapsed());
            m_clock.start();
        });
        m_timer.start(0);
    }
    double longest() const { return milliseconds(m_longest); }

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_longest = 0;
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
    report(qPrintable(QStringLiteral("longest wait of an event: ") + QString::fromLatin1(format)), heartbeat.longest());
}

void waits(AppDelegate &app)
{
    {
        const Heartbeat heartbeat;
        QSignalSpy loaded(&app.loadContactsViewController(), &LoadContactsViewController::tableViewDataChange);
        app.loadClicked();
        waitUntil([&loaded] { return !loaded.isEmpty(); });
        QTest::qWait(50);
        report("longest wait of an event: load", heartbeat.longest());
    }
    {
        const Heartbeat heartbeat;
        app.scanClicled();
        waitUntil([&app] { return app.outlineViewController() && app.outlineViewController()->selectedItem(); });
        report("longest wait of an event: scan of all conditions", heartbeat.longest());
        report("    findings", double(app.outlineViewController()->findingCount()), "");
        app.reloadUI();
        waitUntil([&app] { return !app.mainWindow().results(); });
    }
    const QTemporaryDir folder;
    for (const char *format : {"Save to CSV", "Save to HTML", "Save to Excel", "Save to Docx"})
        exportOnce(app, format, folder.path());
}

void typing(AppDelegate &app)
{
    QLineEdit *field = app.mainWindow().contactTable()->searchField();
    double longest = 0;
    for (const char *text : {"a", "an", "ann", "ann 1", "", "zzz", "z", "example.com", ""}) {
        QElapsedTimer timer;
        timer.start();
        field->setText(QString::fromLatin1(text));
        app.mainWindow().repaint();
        QCoreApplication::processEvents();
        longest = std::max(longest, milliseconds(timer.nsecsElapsed()));
    }
    report("a text in the search field, until the rows are painted", longest);
}

void scrolling(AppDelegate &app)
{
    QTableView *table = app.mainWindow().contactTable()->table();
    double longest = 0;
    double sum = 0;
    constexpr int kFrames = 500;
    for (int i = 0; i < kFrames; ++i) {
        table->verticalScrollBar()->setValue(i * 200);
        QElapsedTimer timer;
        timer.start();
        table->viewport()->repaint();
        const double time = milliseconds(timer.nsecsElapsed());
        longest = std::max(longest, time);
        sum += time;
    }
    report("a painted frame of the table, on average", sum / kFrames);
    report("a painted frame of the table, the longest", longest);
}

void idling()
{
    constexpr int kSeconds = 10;
    QTest::qWait(200); // what is due still
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
    QTest::qWait(500); // the texts for the search field are collected
    typing(app);
    scrolling(app);
    waits(app);
    idling();
    return 0;
}
