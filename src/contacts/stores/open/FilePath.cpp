// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/open/FilePath.h"

#include "contacts/model/Utf8Text.h"

#include <QDir>

#include <filesystem>

bool isText(std::string_view bytes)
{
    const QByteArray again = textOfUtf8(bytes).toUtf8();
    return std::string_view(again.constData(), std::size_t(again.size())) == bytes;
}

Result<QString> filePath(const QString &given)
{
    namespace fs = std::filesystem;
    if (given.isEmpty())
        return Error{ErrorKind::Invalid, QStringLiteral("an empty text is no path of a file")};
    std::error_code failed;
    const std::string absolute = fs::absolute(given.toStdString(), failed).string();
    std::string target = fs::weakly_canonical(absolute, failed).string();
    if (failed) // it leads nowhere, and opening the file says why
        target = absolute;
    for (const std::string &path : {absolute, target}) {
        if (!isText(path))
            return Error{ErrorKind::Invalid,
                given % QStringLiteral(": leads to a folder or file whose name is not UTF-8: ") % textOfUtf8(path)};
    }
    return given.startsWith(u':') ? textOfUtf8(absolute) : given;
}
