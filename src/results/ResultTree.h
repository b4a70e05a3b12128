// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/PersonItem.h"

#include <QAbstractItemModel>
#include <QMultiHash>
#include <QRectF>

/// What a view shows in the row of a node.
struct RowView
{
    QLatin1StringView identifier; ///< of the kind of row: "HeaderTextField" or "MainCell"
    QRectF frame; ///< of a group's text; null for a finding, whose cell has its own layout
    QString text; ///< a group's name in upper case; of a finding, what is wrong
    QString myTextField; ///< a finding's name; empty for a group
    QByteArray picture; ///< a finding's, as an image file; empty: the image resource "BigHead.png"; empty for a group
};

/// The tree of findings, two levels deep, and the model that views show it by: groups, and under them findings. A group
/// whose findings are all gone may stay. Nodes are found by the uid of their person in constant time.
class ResultTree : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role {
        NameRole = Qt::DisplayRole, ///< the finding's name, or the group's in upper case
        DescriptionRole = Qt::ToolTipRole, ///< what is wrong
        PictureRole = Qt::UserRole, ///< bytes; absent where the person has no picture
        IsGroupRole,
        UidRole,
        IsGoneRole, ///< PersonItem::isGone()
    };

    using QAbstractItemModel::QAbstractItemModel;

    const QList<PersonItemPtr> &rootNodes() const { return m_rootNodes; }
    /// Takes the place of all nodes there were.
    void setRootNodes(QList<PersonItemPtr> groups);
    bool contains(const PersonItemPtr &node) const;
    qsizetype findingCount() const { return m_nodesOfUid.size(); }

    /// Both do nothing for a node that is not there.
    void removeFinding(const PersonItemPtr &finding);
    void removeGroup(const PersonItemPtr &group);
    /// Removes all findings of the person. @return how many
    qsizetype sweep(const QString &uid);
    /// The same, and removes all groups that are empty then.
    void pruningSweep(const QString &uid);

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
    void forget(PersonItem &finding);

    QList<PersonItemPtr> m_rootNodes;
    QMultiHash<QString, PersonItem *> m_nodesOfUid;
};
