// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "export/formats/SafeText.h"

#include <QStringList>

#include <optional>

/// What became of an export.
struct ExportReport
{
    QStringList paths; ///< of the files that were written, in that order
    std::optional<Error> error; ///< the first thing that went wrong; files may have been written nevertheless
    TextRepairs repairs;
    QString remark; ///< where something is that may be missed; nothing of it is lost

    /// A file that was written, or the reason why it was not. True when it was.
    bool take(const Result<QString> &written);
};
