// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/OutlineViewController.h"

#include "contacts/book/ChangeCause.h"
#include "contacts/model/NameTexts.h"
#include "fix/FixLog.h"

#include <QLoggingCategory>

#include <algorithm>

namespace {

Q_LOGGING_CATEGORY(lcResults, "peoplenook.results")

qsizetype countOf(const ScanResult &result)
{
    qsizetype count = 0;
    for (const auto &[condition, findings] : result)
        count += std::visit([](const auto &list) { return qsizetype(list.size()); }, findings);
    return count;
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
    for (const ABPersonPtr &person : withChildArray) {
        const PersonItemPtr child = PersonItem::initChildNodeWithPerson(person);
        child->setParentNode(group);
        group->addChild(child);
    }
    return group;
}

void OutlineViewController::setOutlineViewDataSouce(const ScanResult &result, const ScanResult &ignored)
{
    QList<PersonItemPtr> groups;
    m_conditions.clear();
    for (const ConditionGroup &row : conditionGroups()) {
        if (result.find(row.condition) || ignored.find(row.condition))
            m_conditions.push_back(row.condition);
        const std::vector<Finding> findings = findingsOf(result, row.condition);
        std::vector<ABPersonPtr> people;
        for (const Finding &finding : findings)
            people.push_back(finding.person);
        const PersonItemPtr group = creatFatherNode(row.name, people);
        if (!group)
            continue;
        group->setFinding({row.condition});
        for (std::size_t i = 0; i < findings.size(); ++i)
            group->childAtIndex(qsizetype(i))->setFinding(findings[i]);
        groups += group;
    }
    m_collapsed.clear();
    m_tree.setRootNodes(std::move(groups));
    m_totalCount = findingCount();
    m_ignoredCount = countOf(ignored);
    setSelected(nullptr);
}

void OutlineViewController::reexamine(const QStringList &uids, const ScanResult &now, const ScanResult &ignored)
{
    const QSet<QString> changed(uids.begin(), uids.end());
    const PersonItemPtr group = m_selected ? m_selected->parentNode() : nullptr;
    QList<PersonItemPtr> nearest = rows(); // the selected one, those below it, then those above it
    const auto selected = std::ranges::find(nearest, m_selected);
    std::reverse(nearest.begin(), selected);
    std::rotate(nearest.begin(), selected, nearest.end());
    for (const Condition condition : m_conditions)
        m_tree.update(condition, findingsOf(now, condition), changed);
    const qsizetype ignoredBefore = std::exchange(m_ignoredCount, countOf(ignored));
    m_totalCount = std::max(m_totalCount + ignoredBefore - m_ignoredCount, findingCount());
    const bool isLost = m_selected && !m_tree.contains(m_selected);
    const auto next = std::ranges::find_if(
        nearest, [this](const auto &item) { return !item->isRootNode() && m_tree.contains(item) && isShown(*item); });
    if (rootNodes().isEmpty() || (isLost && next == nearest.end()))
        moveOn(group);
    else if (isLost)
        setSelected(*next);
    else if (!m_selected && isFiltered())
        selectFirstShown();
    else if (m_selected)
        outlineViewSelectionDidChange();
    else
        Q_EMIT detailPanelChanged(); // for the counts
}

void OutlineViewController::setFilter(const QString &text)
{
    m_filter = FindingFilter(text);
    Q_EMIT filterChanged();
    if (!m_selected || !isShown(*m_selected))
        selectFirstShown();
}

QList<PersonItemPtr> OutlineViewController::shownFindings(const PersonItemPtr &group) const
{
    QList<PersonItemPtr> shown = group->childrenArray();
    shown.removeIf([this](const PersonItemPtr &finding) { return !isShown(*finding); });
    return shown;
}

/// Null where the group has none.
PersonItemPtr OutlineViewController::firstShown(const PersonItemPtr &group) const
{
    const auto &findings = group->childrenArray();
    const auto first = std::ranges::find_if(findings, [this](const auto &finding) { return isShown(*finding); });
    return first == findings.end() ? nullptr : *first;
}

/// In an open group if possible.
void OutlineViewController::selectFirstShown()
{
    for (const bool isOpen : {true, false}) {
        for (const auto &group : rootNodes()) {
            const PersonItemPtr first = isItemExpanded(group) == isOpen ? firstShown(group) : nullptr;
            if (!first)
                continue;
            if (m_collapsed.remove(group.get()))
                Q_EMIT itemExpanded(m_tree.indexOfNode(group.get()));
            setSelected(first);
            return;
        }
    }
    setSelected(nullptr);
    showTips();
}

QStringList OutlineViewController::conditionTitles() const
{
    QStringList titles;
    for (const Condition condition : m_conditions)
        titles += conditionInfo(condition).title;
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

QList<PersonItemPtr> OutlineViewController::rows() const
{
    QList<PersonItemPtr> rows;
    for (const auto &group : rootNodes()) {
        rows += group;
        if (isItemExpanded(group))
            rows += group->childrenArray();
    }
    return rows;
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
    const auto open = std::ranges::find_if(
        rootNodes(), [this](const auto &group) { return isItemExpanded(group) && firstShown(group); });
    if (open == rootNodes().end())
        showTips();
    else
        setSelected(firstShown(*open));
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
    return FixPreview(m_selected->finding()).creatScrollerViewWithTitle(m_previewTitle);
}

std::vector<LostValue> OutlineViewController::leftBehind() const
{
    if (m_previewTitle.isNull() || !m_selected || m_selected->isRootNode() || m_selected->isGone())
        return {};
    return ::leftBehind(m_selected->finding(), m_previewTitle);
}

void OutlineViewController::FixFounction()
{
    const PersonItemPtr item = m_selected;
    const PersonItemPtr group = item ? item->parentNode() : nullptr;
    if (group)
        run(handlerFor(item->finding().condition), item);
    moveOn(group);
}

void OutlineViewController::run(FixHandler handler, const PersonItemPtr &item)
{
    if (item->parentNode())
        run(handler, item, causeOfRepair({item}), m_delegate.alertPanel());
}

ChangeCausePtr OutlineViewController::causeOfRepair(const QList<PersonItemPtr> &findings) const
{
    const ConditionGroup &group = conditionGroup(findings.front()->finding().condition);
    const QString repair = group.name % QStringLiteral(": ") % currentOption(group.optionGroup);
    return makeCause(ChangeCause::Kind::Repair,
        findings.size() == 1 ? withReadableName(repair, *findings.front()->person()->record())
                             : QString(repair % QStringLiteral(" (%1 findings)").arg(findings.size())));
}

FixOutcome OutlineViewController::repair(
    const PersonItemPtr &finding, const ChangeCausePtr &cause, AlertPanel &alertPanel)
{
    return run(handlerFor(finding->finding().condition), finding, cause, alertPanel);
}

FixOutcome OutlineViewController::run(
    FixHandler handler, const PersonItemPtr &item, const ChangeCausePtr &cause, AlertPanel &alertPanel)
{
    Finding finding = item->finding(); // as a question is answered, the node may be brought up to date
    finding.cause = cause;
    const FixOutcome outcome =
        handler(finding, currentOption(conditionGroup(finding.condition).optionGroup), alertPanel);
    if (outcome.editsInContacts)
        m_delegate.editInAddressBook(item->person());
    if (!outcome.cancelled)
        m_tree.apply(outcome, item);
    Q_EMIT fixed(outcome, item);
    return outcome;
}

void OutlineViewController::moveOn(const PersonItemPtr &group)
{
    if (const PersonItemPtr next = group ? firstShown(group) : nullptr) {
        setSelected(next);
        return;
    }
    if (rootNodes().isEmpty()) {
        setSelected(nullptr);
        backClicked();
        return;
    }
    if (isFiltered()) {
        selectFirstShown();
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
