// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>

/// Why people were changed; the history groups changes by it.
struct ChangeCause
{
    enum class Kind { Other, Repair, Edit, Deletion, Import, Card, Restore };

    QString id; ///< unique across runs and programs; the same for all saves that belong together
    Kind kind = Kind::Other;
    QString description; ///< details: a repair's group and option, a field, a file; may be empty
};

using ChangeCausePtr = std::shared_ptr<const ChangeCause>;

/// A cause with a new id.
ChangeCausePtr makeCause(ChangeCause::Kind kind, const QString &description = {});

/// A kind's name in a store ("repair"), and back; unknown names count as Other.
QLatin1StringView nameOfKind(ChangeCause::Kind kind);
ChangeCause::Kind kindNamed(QStringView name);

/// Kind and description, as in "edit: Home City".
QString textOf(const ChangeCause &cause);
