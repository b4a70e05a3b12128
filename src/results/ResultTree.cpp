// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ResultTree.h"

#include "fix/FixLog.h"
#include "results/ConditionGroups.h"

#include <algorithm>

namespace {

PersonItem *itemOf(const QModelIndex &index)
{
    return static_cast<PersonItem *>(index.internalPointer());
}

qsizetype placeOf(Condition condition)
{
    return std::ranges::find(conditionGroups(), condition, &ConditionGroup::condition) - conditionGroups().begin();
}

/// Also those of people who share an address with one who changed: which of them the scan reports depends on all.
bool concerns(const Finding &finding, const QSet<QString> &changed)
{
    const auto isChanged = [&changed](const ABPersonPtr &person) { return changed.contains(person->uniqueId()); };
    return isChanged(finding.person) || std::ranges::any_of(finding.duplicateEmailArray, isChanged);
}

} // namespace

void ResultTree::setRootNodes(QList<PersonItemPtr> groups)
{
    beginResetModel();
    m_rootNodes = std::move(groups);
    m_nodesOfUid.clear();
    qsizetype count = 0;
    for (const auto &group : std::as_const(m_rootNodes))
        count += group->childrenCount();
    m_nodesOfUid.reserve(count);
    for (const auto &group : std::as_const(m_rootNodes)) {
        for (const auto &child : std::as_const(*group).childrenArray())
            m_nodesOfUid.insert(child->person()->uniqueId(), child.get());
    }
    endResetModel();
}

void ResultTree::forget(PersonItem &finding)
{
    m_nodesOfUid.remove(finding.person()->uniqueId(), &finding);
}

bool ResultTree::contains(const PersonItemPtr &node) const
{
    return node->isRootNode() ? m_rootNodes.contains(node)
                              : m_nodesOfUid.contains(node->person()->uniqueId(), node.get());
}

void ResultTree::update(Condition condition, const std::vector<Finding> &found, const QSet<QString> &changed)
{
    QHash<QString, const Finding *> now; // of the people changed
    for (const Finding &finding : found) {
        if (concerns(finding, changed))
            now.insert(keyOf(finding), &finding);
    }
    const PersonItemPtr group = groupOf(condition, !now.isEmpty());
    if (!group)
        return;
    updateKnown(*group, now, changed);
    insertNew(group, found, now);
    if (group->childrenCount() == 0)
        removeGroup(group);
}

/// Null where there is none; one that is wanted is made.
PersonItemPtr ResultTree::groupOf(Condition condition, bool isWanted)
{
    const auto next = std::ranges::find_if(m_rootNodes,
        [&](const PersonItemPtr &group) { return placeOf(group->finding().condition) >= placeOf(condition); });
    const auto row = next - m_rootNodes.begin();
    if (row < m_rootNodes.size() && m_rootNodes[row]->finding().condition == condition)
        return m_rootNodes[row];
    if (!isWanted)
        return nullptr;
    const PersonItemPtr group = PersonItem::initFatherNodeWithName(conditionGroup(condition).name);
    group->setFinding({condition});
    beginInsertRows({}, int(row), int(row));
    m_rootNodes.insert(row, group);
    endInsertRows();
    return group;
}

void ResultTree::updateKnown(
    PersonItem &group, const QHash<QString, const Finding *> &now, const QSet<QString> &changed)
{
    const QList<PersonItemPtr> findings = group.childrenArray();
    for (const auto &node : findings) {
        if (!concerns(node->finding(), changed))
            continue;
        if (const Finding *finding = now.value(keyOf(node->finding())))
            node->setFinding(*finding);
        else
            removeFinding(node);
    }
}

/// Behind the finding before it in the scan.
void ResultTree::insertNew(
    const PersonItemPtr &group, const std::vector<Finding> &found, const QHash<QString, const Finding *> &now)
{
    QHash<QString, qsizetype> rows;
    for (qsizetype row = 0; row < group->childrenCount(); ++row)
        rows.insert(keyOf(group->childAtIndex(row)->finding()), row);
    qsizetype place = 0;
    qsizetype inserted = 0;
    for (const Finding &finding : found) {
        const QString key = keyOf(finding);
        if (const auto row = rows.constFind(key); row != rows.constEnd()) {
            place = std::max(place, *row + inserted + 1);
        } else if (now.contains(key)) {
            const PersonItemPtr node = PersonItem::initChildNodeWithPerson(finding.person);
            node->setFinding(finding);
            insertFinding(group, place++, node);
            ++inserted;
        }
    }
}

void ResultTree::insertFinding(const PersonItemPtr &group, qsizetype row, const PersonItemPtr &finding)
{
    beginInsertRows(indexOfNode(group.get()), int(row), int(row));
    finding->setParentNode(group);
    group->childrenArray().insert(row, finding);
    m_nodesOfUid.insert(finding->person()->uniqueId(), finding.get());
    endInsertRows();
}

void ResultTree::removeFinding(const PersonItemPtr &finding)
{
    const PersonItemPtr group = finding->parentNode();
    const auto row = group ? group->indexOfChild(finding.get()) : -1;
    if (row < 0)
        return;
    beginRemoveRows(indexOfNode(group.get()), int(row), int(row));
    forget(*finding);
    group->removeChildAtIndex(row);
    endRemoveRows();
}

void ResultTree::removeGroup(const PersonItemPtr &group)
{
    const auto row = m_rootNodes.indexOf(group);
    if (row < 0)
        return;
    beginRemoveRows({}, int(row), int(row));
    for (const auto &child : std::as_const(*group).childrenArray())
        forget(*child);
    m_rootNodes.removeAt(row);
    endRemoveRows();
}

qsizetype ResultTree::sweep(const QString &uid)
{
    const QList<PersonItem *> nodes = m_nodesOfUid.values(uid);
    for (PersonItem *node : nodes)
        removeFinding(node->shared_from_this());
    return nodes.size();
}

void ResultTree::pruningSweep(const QString &uid)
{
    sweep(uid);
    const QList<PersonItemPtr> groups = m_rootNodes;
    for (const auto &group : groups) {
        if (group->childrenCount() == 0)
            removeGroup(group);
    }
}

void ResultTree::apply(const FixOutcome &outcome, const PersonItemPtr &finding)
{
    const PersonItemPtr group = finding->parentNode();
    if (!group)
        return;
    if (outcome.removesNode)
        removeFinding(finding);
    for (const QString &uid : outcome.sweptUids) {
        if (outcome.sweep == FixOutcome::Sweep::Pruning) {
            pruningSweep(uid);
            continue;
        }
        for (qsizetype swept = sweep(uid); swept > 0 && outcome.lineOfSweptNode; --swept)
            qCDebug(lcFix, "%s", outcome.lineOfSweptNode);
    }
    if (group->childrenCount() == 0)
        removeGroup(group);
}

RowView ResultTree::rowView(const PersonItem &node) const
{
    if (node.isRootNode())
        return {QLatin1StringView("HeaderTextField"), QRectF(1, 5, 316, 17), node.name().toUpper(), {}, {}};
    return {QLatin1StringView("MainCell"), {}, conditionGroup(node.finding().condition).rowDescription, node.name(),
        node.person()->imageData().value_or(QByteArray())};
}

QModelIndex ResultTree::indexOfNode(const PersonItem *node) const
{
    if (!node)
        return {};
    qsizetype row = -1;
    if (node->isRootNode()) {
        const auto found = std::ranges::find(m_rootNodes, node, &PersonItemPtr::get);
        row = found == m_rootNodes.end() ? -1 : found - m_rootNodes.begin();
    } else if (const PersonItemPtr group = node->parentNode()) {
        row = group->indexOfChild(node);
    }
    return row < 0 ? QModelIndex() : createIndex(int(row), 0, node);
}

PersonItemPtr ResultTree::nodeAt(const QModelIndex &index) const
{
    return index.isValid() ? itemOf(index)->shared_from_this() : nullptr;
}

QModelIndex ResultTree::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    const QList<PersonItemPtr> &nodes = parent.isValid() ? itemOf(parent)->childrenArray() : m_rootNodes;
    return createIndex(row, column, nodes[row].get());
}

QModelIndex ResultTree::parent(const QModelIndex &child) const
{
    return child.isValid() ? indexOfNode(itemOf(child)->parentNode().get()) : QModelIndex();
}

int ResultTree::rowCount(const QModelIndex &parent) const
{
    return int(parent.isValid() ? itemOf(parent)->childrenCount() : m_rootNodes.size());
}

int ResultTree::columnCount(const QModelIndex &) const
{
    return 1;
}

QVariant ResultTree::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const PersonItem &node = *itemOf(index);
    switch (role) {
    case NameRole:
        return node.isRootNode() ? rowView(node).text : node.name();
    case DescriptionRole:
        return node.isRootNode() ? QVariant() : QVariant(rowView(node).text);
    case Qt::AccessibleTextRole: // what is wrong is drawn, and a name alone does not say it
        if (node.isRootNode())
            return node.name();
        return QString(node.name() % QStringLiteral(": ") % rowView(node).text
            % (node.isGone() ? QStringLiteral(", ") + kNoLongerThere : QString()));
    case PictureRole: {
        const auto picture = node.isRootNode() ? std::nullopt : node.person()->imageData();
        return picture ? QVariant(*picture) : QVariant();
    }
    case IsGroupRole:
        return node.isRootNode();
    case UidRole:
        return node.isRootNode() ? QVariant() : QVariant(node.person()->uniqueId());
    case IsGoneRole:
        return node.isGone();
    default:
        return {};
    }
}

Qt::ItemFlags ResultTree::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return itemOf(index)->isRootNode() ? Qt::ItemIsEnabled
                                       : Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}
