// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AppDelegate.h"
#include "app/Appearance.h"
#include "app/CalmStyle.h"
#include "app/RestingCursor.h"
#include "app/SingleInstance.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>

#include <utility>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("peoplenook"));
    QApplication::setOrganizationName(QStringLiteral("peoplenook"));
    QApplication::setApplicationDisplayName(QStringLiteral("Brindle PeopleNook"));
    QApplication::setApplicationVersion(QStringLiteral(PEOPLENOOK_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("org.peoplenook.PeopleNook"));
    QApplication::setStyle(std::make_unique<CalmStyle>().release()); // takes it over
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/art/peoplenook.png")));

    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addVersionOption();
    const QCommandLineOption where(QStringLiteral("address-book"),
        QStringLiteral("The address book: a file, or eds:UID for one of the desktop's."), QStringLiteral("WHERE"));
    const QCommandLineOption scheme(QStringLiteral("appearance"),
        QStringLiteral("light or dark, whatever the desktop has."), QStringLiteral("SCHEME"));
    arguments.addOptions({where, scheme});
    arguments.addPositionalArgument(
        QStringLiteral("FILE"), QStringLiteral("vCard files to import."), QStringLiteral("[FILE...]"));
    arguments.process(application);

    SingleInstance instance(arguments.value(where));
    if (instance.handOver(arguments.positionalArguments()))
        return 0;

    const RestingCursor cursor;
    Appearance appearance;
    if (arguments.isSet(scheme)) {
        const bool isDark = arguments.value(scheme) == QStringLiteral("dark");
        appearance.setScheme(isDark ? Appearance::Scheme::Dark : Appearance::Scheme::Light);
    }
    AppDelegate delegate;
    QStringList waiting = arguments.positionalArguments();
    bool isOpen = false;
    const auto importWaiting = [&] {
        if (isOpen && !waiting.isEmpty())
            delegate.importFiles(std::exchange(waiting, {}));
    };
    QObject::connect(&delegate, &AppDelegate::addressBookOpened, &delegate, [&](bool wasOpened) {
        isOpen = wasOpened;
        importWaiting();
    });
    QObject::connect(&instance, &SingleInstance::calledAgain, &delegate, [&](const QStringList &files) {
        MainWindow &window = delegate.mainWindow();
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        window.show();
        window.raise();
        window.activateWindow();
        waiting += files;
        importWaiting();
    });
    delegate.applicationDidFinishLaunching(arguments.value(where));
    return QApplication::exec();
}
