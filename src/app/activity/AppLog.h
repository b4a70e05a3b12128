// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcApp)
/// Lines per frame of an animation; off by default.
Q_DECLARE_LOGGING_CATEGORY(lcAppTrace)
