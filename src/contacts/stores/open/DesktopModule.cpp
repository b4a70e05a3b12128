// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/open/DesktopModule.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibrary>

namespace {

/// Where installed programs and those in a build tree have their modules.
QString moduleFile()
{
    for (const char *folder : {"/../lib/peoplenook/", "/../../lib/peoplenook/"}) {
        const QFileInfo file(QCoreApplication::applicationDirPath() % QLatin1StringView(folder)
            % QLatin1StringView("peoplenook-eds.so"));
        if (file.exists())
            return file.canonicalFilePath();
    }
    return {};
}

Result<const EdsModule *> loaded()
{
    const QString what = QStringLiteral("the desktop's address books are not available: ");
    const QString file = moduleFile();
    if (file.isEmpty())
        return Error{ErrorKind::NotFound, what % QStringLiteral("this program was installed without their module")};
    QLibrary library(file);
    library.setLoadHints(QLibrary::PreventUnloadHint);
    // The cast is what loading a function is.
    const auto function =
        reinterpret_cast<EdsModuleFunction>(library.resolve(kEdsModuleFunction)); // NOLINT(*-reinterpret-cast)
    if (!function)
        return Error{ErrorKind::NotFound, what % library.errorString().simplified()};
    const EdsModule *module = function();
    if (qstrcmp(module->version, PEOPLENOOK_VERSION) != 0)
        return Error{ErrorKind::NotFound, what % QStringLiteral("their module is of another version of this program")};
    return module;
}

} // namespace

Result<const EdsModule *> DesktopModule::load()
{
    static const Result<const EdsModule *> module = loaded();
    return module;
}

bool DesktopModule::isOffered()
{
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return false;
    const auto module = load();
    return module && (*module)->isOffered();
}
