// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcFix)
/// Texts for standard output, without line ends.
Q_DECLARE_LOGGING_CATEGORY(lcFixStdout)
