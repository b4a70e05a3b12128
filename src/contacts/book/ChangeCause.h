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

/// A cause with an id of its own.
ChangeCausePtr makeCause(ChangeCause::Kind kind, const QString &description = {});

/// How a kind is called in a store ("repair"), and back; a name that is none counts as Other.
QLatin1StringView nameOfKind(ChangeCause::Kind kind);
ChangeCause::Kind kindNamed(QStringView name);

/// Both together, as in "edit: Home City".
QString textOf(const ChangeCause &cause);

/// What this thread does while the scope lives is for one cause: everything that is changed in an address book, in
/// however many saves it is written. A scope within another one changes nothing, so whoever acts on behalf of a larger
/// deed need not know of it. Made and ended on the same thread.
class CauseScope
{
public:
    explicit CauseScope(ChangeCause::Kind kind, const QString &description = {});
    ~CauseScope();
    CauseScope(const CauseScope &) = delete;
    CauseScope &operator=(const CauseScope &) = delete;

    /// Of the outermost scope on this thread; null where there is none.
    static ChangeCausePtr current();

private:
    bool m_isOutermost;
};
