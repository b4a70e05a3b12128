// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/PersonItem.h"

#include <QAbstractItemModel>
#include <QMultiHash>
#include <QRectF>
#include <QSet>

/// The content of a node's row.
struct RowView
{
    QLatin1StringView identifier; ///< "HeaderTextField" or "MainCell"
    QRectF frame; ///< of a group's text; null for a finding, whose cell has a fixed layout
    QString text; ///< a group's name in upper case; for a finding, what is wrong
    QString myTextField; ///< a finding's name; empty for a group
    QByteArray picture; ///< a finding's, as an image file; empty: the image resource "BigHead.png"; empty for a group
};

/// The tree of findings, two levels deep, as a model for views: groups, and findings in them. Empty groups may stay.
/// Finds nodes by their person's uid in constant time.
class ResultTree : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role {
        NameRole = Qt::DisplayRole, ///< the finding's name, or the group's in upper case
        DescriptionRole = Qt::ToolTipRole, ///< what is wrong
        PictureRole = Qt::UserRole, ///< bytes; absent without a picture
        IsGroupRole,
        UidRole,
        IsGoneRole, ///< PersonItem::isGone()
    };

    using QAbstractItemModel::QAbstractItemModel;

    const QList<PersonItemPtr> &rootNodes() const { return m_rootNodes; }
    /// Replaces all nodes.
    void setRootNodes(QList<PersonItemPtr> groups);
    bool contains(const PersonItemPtr &node) const;
    qsizetype findingCount() const { return m_nodesOfUid.size(); }

    /// Replaces the findings that concern people with the uids @p changed by those in @p found, a scan's for the
    /// condition. New findings and groups are inserted at their places; a group without findings goes.
    void update(Condition condition, const std::vector<Finding> &found, const QSet<QString> &changed);
    /// Both do nothing for a missing node.
    void removeFinding(const PersonItemPtr &finding);
    void removeGroup(const PersonItemPtr &group);
    /// Removes all findings of the person. @return how many
    qsizetype sweep(const QString &uid);
    /// The same, then removes all empty groups.
    void pruningSweep(const QString &uid);
    /// Removes what a repair of the finding removes; its group too if that leaves it empty.
    void apply(const FixOutcome &outcome, const PersonItemPtr &finding);

    RowView rowView(const PersonItem &node) const;

    QModelIndex indexOfNode(const PersonItem *node) const;
    /// Null for an invalid index.
    PersonItemPtr nodeAt(const QModelIndex &index) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    PersonItemPtr groupOf(Condition condition, bool isWanted);
    void updateKnown(PersonItem &group, const QHash<QString, const Finding *> &now, const QSet<QString> &changed);
    void insertNew(
        const PersonItemPtr &group, const std::vector<Finding> &found, const QHash<QString, const Finding *> &now);
    void insertFinding(const PersonItemPtr &group, qsizetype row, const PersonItemPtr &finding);
    void forget(PersonItem &finding);

    QList<PersonItemPtr> m_rootNodes;
    QMultiHash<QString, PersonItem *> m_nodesOfUid;
};
