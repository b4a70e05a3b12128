// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/OutlineViewController.h"

#include "contacts/book/ChangeCause.h"
#include "contacts/model/NameTexts.h"
#include "fix/FixLog.h"
#include "results/NoLongerFound.h"
#include "results/ResultsLog.h"

#include <algorithm>

namespace {

PersonItemPtr addFinding(const PersonItemPtr &group, const ABPersonPtr &person)
{
    auto child = PersonItem::initChildNodeWithPerson(person);
    child->setParentNode(group);
    group->addChild(child);
    return child;
}

PersonItemPtr groupOf(const QString &name, const std::vector<EmailMatch> &matches)
{
    if (matches.empty())
        return nullptr;
    auto group = PersonItem::initFatherNodeWithName(name);
    for (const EmailMatch &match : matches) {
        const PersonItemPtr child = addFinding(group, match.searchedPerson);
        child->setDuplicateEmailArray({match.matchPersonsArray.begin(), match.matchPersonsArray.end()});
        child->setDuplicateEmailType(match.duplicateEmailType);
        child->setSharedAddress(match.sharedAddress);
    }
    return group;
}

PersonItemPtr groupOf(const QString &name, const std::vector<ABPersonPtr> &people)
{
    return OutlineViewController::creatFatherNode(name, people);
}

} // namespace

OutlineViewController::OutlineViewController(ResultsDelegate &delegate, QObject *parent)
    : QObject(parent), m_delegate(delegate)
{ }

OutlineViewController::~OutlineViewController()
{
    qCDebug(lcResults, "bye bye !");
}

PersonItemPtr OutlineViewController::creatFatherNode(
    const QString &name, const std::vector<ABPersonPtr> &withChildArray)
{
    if (withChildArray.empty())
        return nullptr;
    auto group = PersonItem::initFatherNodeWithName(name);
    group->reserveChildren(qsizetype(withChildArray.size()));
    for (const ABPersonPtr &person : withChildArray)
        addFinding(group, person);
    return group;
}

void OutlineViewController::setOutlineViewDataSouce(const ScanResult &result)
{
    QList<PersonItemPtr> groups;
    for (const ConditionGroup &row : conditionGroups()) {
        const Findings *findings = result.find(row.condition);
        if (!findings)
            continue;
        const QString name = row.name;
        if (auto group = std::visit([&name](const auto &list) { return groupOf(name, list); }, *findings))
            groups.push_back(std::move(group));
    }
    m_collapsed.clear();
    m_tree.setRootNodes(std::move(groups));
    setSelected(nullptr);
}

void OutlineViewController::reexamine(const QStringList &uids, const ScanResult &now)
{
    const QSet<QString> changed(uids.begin(), uids.end());
    const PersonItemPtr group = m_selected ? m_selected->parentNode() : nullptr;
    const QList<PersonItemPtr> groups = rootNodes();
    for (const auto &row : groups) {
        const ConditionGroup *condition = conditionGroupNamed(row->name());
        const Findings *findings = condition ? now.find(condition->condition) : nullptr;
        const QList<PersonItemPtr> gone = noLongerFound(*row, findings, changed);
        for (const auto &finding : gone)
            m_tree.removeFinding(finding);
        if (row->childrenCount() == 0)
            m_tree.removeGroup(row);
    }
    if (rootNodes().isEmpty() || (m_selected && !m_tree.contains(m_selected)))
        moveOn(group);
    else
        outlineViewSelectionDidChange();
}

QStringList OutlineViewController::conditionTitles() const
{
    QStringList titles;
    for (const auto &row : rootNodes()) {
        if (const ConditionGroup *group = conditionGroupNamed(row->name()))
            titles += conditionInfo(group->condition).title;
    }
    return titles;
}

QStringList OutlineViewController::uids() const
{
    QStringList uids;
    for (const auto &row : rootNodes()) {
        for (const auto &finding : std::as_const(*row).childrenArray())
            uids += finding->person()->uniqueId();
    }
    return uids;
}

qsizetype OutlineViewController::numberOfChildrenOfItem(const PersonItemPtr &item) const
{
    return item ? item->childrenCount() : rootNodes().size();
}

PersonItemPtr OutlineViewController::child(qsizetype index, const PersonItemPtr &ofItem) const
{
    return ofItem ? ofItem->childAtIndex(index) : rootNodes().at(index);
}

bool OutlineViewController::isItemExpandable(const PersonItemPtr &item) const
{
    return !item || item->childrenCount() > 0;
}

qsizetype OutlineViewController::rowForItem(const PersonItemPtr &item) const
{
    qsizetype row = 0;
    for (const auto &group : rootNodes()) {
        if (group == item)
            return row;
        ++row;
        if (!isItemExpanded(group))
            continue;
        if (const qsizetype place = group->indexOfChild(item.get()); place >= 0)
            return row + place;
        row += group->childrenCount();
    }
    return -1;
}

PersonItemPtr OutlineViewController::itemAtRow(qsizetype row) const
{
    for (const auto &group : rootNodes()) {
        if (row == 0)
            return group;
        --row;
        const qsizetype count = isItemExpanded(group) ? group->childrenCount() : 0;
        if (row >= 0 && row < count)
            return group->childAtIndex(row);
        row -= count;
    }
    return nullptr;
}

void OutlineViewController::selectItem(const PersonItemPtr &item)
{
    if (item && shouldSelectItem(item))
        setSelected(item);
}

void OutlineViewController::selectRow(qsizetype row)
{
    if (const PersonItemPtr item = itemAtRow(row))
        setSelected(item);
}

void OutlineViewController::setSelected(const PersonItemPtr &item)
{
    m_selected = item;
    m_previewTitle = QString();
    outlineViewSelectionDidChange();
    Q_EMIT selectionChanged();
}

void OutlineViewController::outlineViewSelectionDidChange()
{
    if (!m_selected)
        return;
    updateUI();
    if (m_panel.optionGroup && !m_selected->isRootNode())
        creatScrollerViewWithTitle(currentOption(*m_panel.optionGroup));
}

void OutlineViewController::setItemExpanded(const PersonItemPtr &group, bool expanded)
{
    if (!isGroupItem(group) || isItemExpanded(group) == expanded)
        return;
    if (expanded) {
        m_collapsed.remove(group.get());
        outlineViewItemDidExpand();
        return;
    }
    outlineViewItemWillCollapse();
    m_collapsed.insert(group.get());
    outlineViewItemDidCollapse();
}

void OutlineViewController::outlineViewItemDidCollapse()
{
    bool allClosed = true;
    for (const auto &group : rootNodes()) {
        if (!isItemExpanded(group) || group->childrenCount() == 0)
            continue;
        setSelected(group->childAtIndex(0));
        allClosed = false;
        break;
    }
    if (allClosed)
        showTips();
    const qsizetype row = m_selected ? rowForItem(m_selected) : -1;
    qCDebug(lcResults, "选中的row：%s", row < 0 ? "" : qUtf8Printable(QString::number(row)));
}

void OutlineViewController::showTips()
{
    m_buttonsEnabled = false;
    m_showsTips = true;
    Q_EMIT detailPanelChanged();
}

void OutlineViewController::updateUI()
{
    if (!m_selected)
        return;
    if (m_selected->isRootNode()) {
        qCDebug(lcResults, "不要选中根节点");
        return;
    }
    removeAllMatrix();
    m_panel = detailPanelOf(*m_selected);
    m_buttonsEnabled = true;
    m_showsTips = false;
    qCDebug(lcResults, "视图控制器View的子视图个数：%lu", static_cast<unsigned long>(m_delegate.subviewCount()));
    Q_EMIT detailPanelChanged();
}

void OutlineViewController::openInContacts()
{
    if (!m_selected || m_selected->isRootNode())
        return;
    const ABPersonPtr &person = m_selected->person();
    qCDebug(lcResults, "%s", qUtf8Printable(person->uniqueId()));
    m_delegate.selectInAddressBook(person);
}

QString OutlineViewController::currentOption(OptionGroup group) const
{
    return optionGroupInfo(group).titles[m_currentOptions[static_cast<std::size_t>(group)]];
}

bool OutlineViewController::chooseOption(OptionGroup group, const QString &title)
{
    const auto place = optionTitled(group, title);
    if (!place)
        return false;
    m_currentOptions[static_cast<std::size_t>(group)] = *place;
    matrixClicked(group);
    return true;
}

void OutlineViewController::creatScrollerViewWithTitle(const QString &title)
{
    qCDebug(lcFix, "%s", qUtf8Printable(title));
    m_previewTitle = title;
    Q_EMIT previewChanged();
}

PreviewDocument OutlineViewController::preview() const
{
    if (m_previewTitle.isNull() || !m_selected || m_selected->isRootNode())
        return {};
    return FixPreview(findingOf(*m_selected)).creatScrollerViewWithTitle(m_previewTitle);
}

void OutlineViewController::FixFounction()
{
    const PersonItemPtr item = m_selected;
    const PersonItemPtr group = item ? item->parentNode() : nullptr;
    if (const ConditionGroup *row = group ? conditionGroupNamed(group->name()) : nullptr)
        run(row->handler, item);
    moveOn(group);
}

void OutlineViewController::run(FixHandler handler, const PersonItemPtr &item)
{
    const PersonItemPtr group = item->parentNode();
    const ConditionGroup *row = group ? conditionGroupNamed(group->name()) : nullptr;
    if (!row)
        return;
    const QString option = currentOption(row->optionGroup);
    Finding finding = findingOf(*item);
    finding.cause = makeCause(ChangeCause::Kind::Repair,
        withReadableName(group->name() % QStringLiteral(": ") % option, *item->person()->record()));
    const FixOutcome outcome = handler(finding, option, m_delegate.alertPanel());
    if (outcome.editsInContacts)
        m_delegate.editInAddressBook(item->person());
    if (!outcome.cancelled)
        applyToTree(item, outcome);
    Q_EMIT fixed(outcome);
}

void OutlineViewController::applyToTree(const PersonItemPtr &item, const FixOutcome &outcome)
{
    const PersonItemPtr group = item->parentNode();
    if (outcome.removesNode)
        m_tree.removeFinding(item);
    for (const QString &uid : outcome.sweptUids) {
        if (outcome.sweep == FixOutcome::Sweep::Pruning) {
            m_tree.pruningSweep(uid);
            continue;
        }
        for (qsizetype swept = m_tree.sweep(uid); swept > 0 && outcome.lineOfSweptNode; --swept)
            qCDebug(lcFix, "%s", outcome.lineOfSweptNode);
    }
    if (group->childrenCount() == 0)
        m_tree.removeGroup(group);
}

void OutlineViewController::moveOn(const PersonItemPtr &group)
{
    if (group && group->childrenCount() > 0) {
        setSelected(group->childAtIndex(0));
        return;
    }
    if (rootNodes().isEmpty()) {
        setSelected(nullptr);
        backClicked();
        return;
    }
    const auto expand = [this](const PersonItemPtr &closed) {
        if (m_collapsed.remove(closed.get()))
            Q_EMIT itemExpanded(m_tree.indexOfNode(closed.get()));
    };
    expand(rootNodes().front());
    // The first groups may have been left without findings.
    PersonItemPtr next = itemAtRow(1);
    for (qsizetype row = 2; next && next->isRootNode(); ++row)
        next = itemAtRow(row);
    const auto filled = std::ranges::find_if(rootNodes(), [](const auto &row) { return row->childrenCount() > 0; });
    if (!next && filled != rootNodes().end()) {
        expand(*filled);
        next = (*filled)->childAtIndex(0);
    }
    setSelected(next);
    if (!next)
        showTips();
}
