// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "export/formats/SafeText.h"

#include <QStringList>

#include <optional>

struct ExportReport
{
    QStringList paths; ///< of the files written, in order
    std::optional<Error> error; ///< the first error; files may still have been written
    TextRepairs repairs;
    QString remark; ///< where to find what may be missed; nothing is lost

    /// Takes the path of a written file, or the error. True for a file.
    bool take(const Result<QString> &written)
    {
        if (written)
            paths += *written;
        else if (!error)
            error = written.error();
        return bool(written);
    }
};
