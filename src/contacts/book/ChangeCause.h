// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>

/// Why people were changed; what the history groups changes by.
struct ChangeCause
{
    enum class Kind { Other, Repair, Edit, Deletion, Import, Card, Restore };

    QString id; ///< the same for all saves that belong together, and for nothing else, in whatever run or program
    Kind kind = Kind::Other;
    QString description; ///< what in particular: a repair's group and option, a field, a file; may be empty
};

using ChangeCausePtr = std::shared_ptr<const ChangeCause>;

/// A cause with a new id.
ChangeCausePtr makeCause(ChangeCause::Kind kind, const QString &description = {});

/// How a kind is called in a store ("repair"), and back; a name that is none counts as Other.
QLatin1StringView nameOfKind(ChangeCause::Kind kind);
ChangeCause::Kind kindNamed(QStringView name);

/// Both together, as in "edit: Home City".
QString textOf(const ChangeCause &cause);
