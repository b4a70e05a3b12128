// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/Appearance.h"
#include "app/look/CalmStyle.h"
#include "app/start/AppDelegate.h"
#include "app/start/SingleInstance.h"
#include "contacts/model/Utf8Text.h"
#include "contacts/stores/open/FilePath.h"
#include "contacts/stores/open/OpenStore.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QMessageBox>

#include <algorithm>
#include <cstdio>
#include <span>
#include <utility>

namespace {

struct Arguments
{
    QString where; ///< as for openStore()
    QStringList files;
};

/// What the program was told to open, as paths that nothing mistakes for something else.
Result<Arguments> checkedArguments(const QCommandLineParser &parser, const QCommandLineOption &where)
{
    if (parser.isSet(where) && parser.value(where).isEmpty())
        return Error{ErrorKind::Invalid, QStringLiteral("--address-book: is empty")};
    const auto book = checkedWhere(parser.value(where));
    if (!book)
        return book.error();
    Arguments arguments{*book, {}};
    for (const QString &given : parser.positionalArguments()) {
        const auto file = filePath(given);
        if (!file)
            return file.error();
        arguments.files += *file;
    }
    return arguments;
}

/// Why one of them cannot be taken as it is, before the application decodes them.
Result<void> checkBytes(std::span<char *const> arguments)
{
    const auto other = std::ranges::find_if_not(arguments, [](const char *argument) { return isText(argument); });
    if (other == arguments.end())
        return {};
    return Error{ErrorKind::Invalid, textOfUtf8(*other) + QStringLiteral(": this argument is not UTF-8")};
}

void introduce()
{
    QApplication::setApplicationName(QStringLiteral("peoplenook"));
    QApplication::setOrganizationName(QStringLiteral("peoplenook"));
    QApplication::setApplicationDisplayName(QStringLiteral("Brindle PeopleNook"));
    QApplication::setApplicationVersion(QStringLiteral(PEOPLENOOK_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("org.peoplenook.PeopleNook"));
    QApplication::setStyle(std::make_unique<CalmStyle>().release()); // takes it over
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/art/peoplenook.png")));
}

int refuse(const Error &error)
{
    std::fprintf(stderr, "%s\n", qPrintable(error.text)); // for a terminal, where the box may not be seen
    QMessageBox::critical(nullptr, QApplication::applicationDisplayName(), error.text);
    return 2;
}

/// Qt knows only dialogs and main windows as windows; a screen reader passes over others that become active.
QAccessibleInterface *roleOfWindow(const QString &className, QObject *object)
{
    static const QStringList windows{
        QStringLiteral("ListWindow"), QStringLiteral("LikelyWindow"), QStringLiteral("HelpWindow")};
    if (!windows.contains(className))
        return nullptr;
    return new QAccessibleWidget(qobject_cast<QWidget *>(object), QAccessible::Window); // Qt takes it over
}

} // namespace

int main(int argc, char *argv[])
{
    const auto bytes = checkBytes({argv, std::size_t(argc)});
    QApplication application(argc, argv);
    introduce();

    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addVersionOption();
    const QCommandLineOption where(QStringLiteral("address-book"),
        QStringLiteral("The address book: a file, or eds:UID for one of the desktop's."), QStringLiteral("WHERE"));
    const QCommandLineOption scheme(QStringLiteral("appearance"),
        QStringLiteral("light or dark, instead of the desktop's."), QStringLiteral("SCHEME"));
    arguments.addOptions({where, scheme});
    arguments.addPositionalArgument(
        QStringLiteral("FILE"), QStringLiteral("vCard files to import."), QStringLiteral("[FILE...]"));
    arguments.process(application);
    if (!bytes)
        return refuse(bytes.error());
    const auto named = checkedArguments(arguments, where);
    if (!named)
        return refuse(named.error());

    SingleInstance instance(named->where);
    if (instance.handOver(named->files))
        return 0;

    Appearance appearance;
    if (arguments.isSet(scheme)) {
        const bool isDark = arguments.value(scheme) == QStringLiteral("dark");
        appearance.setScheme(isDark ? Appearance::Scheme::Dark : Appearance::Scheme::Light);
    }
    QAccessible::installFactory(&roleOfWindow);
    AppDelegate delegate;
    QStringList waiting = named->files;
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
    delegate.mainWindow().standAside(instance.place());
    delegate.applicationDidFinishLaunching(named->where);
    return QApplication::exec();
}
