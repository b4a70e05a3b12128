// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/Finding.h"

#include <memory>

class PersonItem;
using PersonItemPtr = std::shared_ptr<PersonItem>;

/// The remark for a finding that isGone().
inline constexpr QLatin1StringView kNoLongerThere{"no longer in the address book"};

/// A node of the tree of findings: a group, or a finding in one. A group owns its children; a child refers weakly to
/// its group. One thread at a time.
class PersonItem : public std::enable_shared_from_this<PersonItem>
{
public:
    static PersonItemPtr initFatherNodeWithName(const QString &name);
    /// Its name is the person's present one and does not follow later edits.
    static PersonItemPtr initChildNodeWithPerson(const ABPersonPtr &person);

    /// Appends; does not set the child's parentNode.
    void addChild(const PersonItemPtr &child) { m_childrenArray.push_back(child); }
    qsizetype childrenCount() const { return m_childrenArray.size(); }
    /// @p index must be in range.
    const PersonItemPtr &childAtIndex(qsizetype index) const { return m_childrenArray[index]; }
    /// -1 if it is not a child.
    qsizetype indexOfChild(const PersonItem *child) const;
    QList<PersonItemPtr> &childrenArray() { return m_childrenArray; }
    const QList<PersonItemPtr> &childrenArray() const { return m_childrenArray; }
    /// Removes all occurrences.
    void removeItem(const PersonItemPtr &child) { m_childrenArray.removeAll(child); }
    /// @p index must be in range.
    void removeChildAtIndex(qsizetype index) { m_childrenArray.removeAt(index); }

    bool isRootNode() const { return m_isRootNode; }
    void setIsRootNode(bool isRootNode) { m_isRootNode = isRootNode; }
    const QString &name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    /// What a filter searches, case-folded: the name, what is wrong, and all texts of the contact as it is now. Only
    /// for findings. Valid until the next call.
    const QString &searchText() const;
    /// For a group only the condition is set.
    const Finding &finding() const { return m_finding; }
    void setFinding(const Finding &finding) { m_finding = finding; }
    /// Null for a group.
    const ABPersonPtr &person() const { return m_finding.person; }
    void setPerson(const ABPersonPtr &person) { m_finding.person = person; }
    /// Whether the finding's person has since been removed, for example by a merge.
    bool isGone() const { return person() && person()->isRemoved(); }
    /// Why nothing can be repaired here, for the user; null if it can, and for a group.
    QString whyNotFixable() const;
    /// Null for a group, and once the group is gone.
    PersonItemPtr parentNode() const { return m_parentNode.lock(); }
    void setParentNode(const PersonItemPtr &parent) { m_parentNode = parent; }
    const QList<ABPersonPtr> &duplicateEmailArray() const { return m_finding.duplicateEmailArray; }
    void setDuplicateEmailArray(const QList<ABPersonPtr> &people) { m_finding.duplicateEmailArray = people; }
    const QString &duplicateEmailType() const { return m_finding.duplicateEmailType; }
    void setDuplicateEmailType(const QString &label) { m_finding.duplicateEmailType = label; }

private:
    bool m_isRootNode = false;
    QList<PersonItemPtr> m_childrenArray;
    QString m_name;
    Finding m_finding;
    std::weak_ptr<PersonItem> m_parentNode;
    mutable QString m_searchText;
    mutable PersonRecordPtr m_searchedRecord; // whose texts these are
};
