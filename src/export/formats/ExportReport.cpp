// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportReport.h"

bool ExportReport::take(const Result<QString> &written)
{
    if (written)
        paths += *written;
    else if (!error)
        error = written.error();
    return bool(written);
}
