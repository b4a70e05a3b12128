// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/ResultsView.h"

#include "app/look/Controls.h"
#include "app/look/Counted.h"
#include "app/look/StatePage.h"
#include "app/look/Strip.h"
#include "app/results/FindingHead.h"
#include "app/results/FindingList.h"
#include "app/results/FixAllDialog.h"
#include "app/results/OptionBox.h"
#include "app/results/PlacesLabel.h"
#include "app/results/PreviewBox.h"
#include "app/results/PreviewView.h"
#include "app/results/RepairTexts.h"
#include "app/results/ShownFindings.h"
#include "contacts/book/ABAddressBook.h"

#include <QAction>
#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QTextDocument>

namespace {

constexpr int kPanelWidth = 420; // at least

/// Those whom the finding is about, as far as they are still there; only for what a merge repairs.
QList<ABPersonPtr> peopleToCompare(const PersonItem &item)
{
    if (item.isRootNode() || !isOfSeveral(item.finding().condition))
        return {};
    QList<ABPersonPtr> people = peopleToMerge(item.finding());
    people.removeIf([](const ABPersonPtr &person) { return person->isRemoved(); });
    return people;
}

QString withKeys(const QString &tip, const QKeySequence &keys)
{
    return ResultsView::tr("%1 (%2)").arg(tip, keys.toString(QKeySequence::NativeText));
}

} // namespace

ResultsView::ResultsView(OutlineViewController &controller, QWidget *parent)
    : QWidget(parent)
    , m_controller(controller)
    , m_shown(new ShownFindings(controller, this))
    , m_list(new FindingList(*m_shown))
    , m_tree(m_list->tree())
    , m_filter(m_list->filterField())
    , m_head(new FindingHead)
    , m_problem(new Strip(Strip::Kind::Problem))
    , m_options(new OptionBox(controller))
    , m_previewBox(new PreviewBox)
    , m_preview(m_previewBox->preview())
    , m_side(new QStackedWidget(this))
    , m_tips(new StatePage(QStringLiteral("tipsView"), this))
    , m_noMatch(new StatePage(QStringLiteral("emptySearch"), this))
    , m_ignoreButton(new QPushButton(symbol(QStringLiteral("view-conceal")), tr("Ignore"), this))
    , m_openContactButton(new QPushButton(tr("Open In Contacts"), this))
    , m_backButton(new QPushButton(tr("Back"), this))
    , m_fixAllButton(new QPushButton(tr("Fix All ..."), this))
    , m_fixButton(new QPushButton(tr("Fix"), this))
{
    m_side->addWidget(makePanel());
    m_side->addWidget(m_tips);
    m_side->addWidget(m_noMatch);
    m_tips->say(tr("What should be repaired?"), {tr("Open a group to see its findings.")});
    m_noMatch->say(tr("No finding contains these words."), {tr("Esc shows all findings.")});
    auto *halves = new QSplitter;
    halves->addWidget(m_list);
    halves->addWidget(m_side);
    halves->setStretchFactor(1, 1);
    halves->setSizes({372, 628});
    halves->setHandleWidth(0);
    halves->setChildrenCollapsible(false);
    auto *layout = innerLayout<QVBoxLayout>(this);
    layout->addWidget(halves, 1);
    layout->addWidget(makeButtons());
    setFocusProxy(m_tree);
    setUpActions();
    followController();
}

QWidget *ResultsView::makePanel()
{
    auto *panel = new QWidget;
    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins(24, 20, 24, 16);
    layout->setSpacing(16);
    layout->addWidget(m_head);
    layout->addWidget(m_problem);
    m_places = new PlacesLabel;
    layout->addWidget(m_places);
    layout->addWidget(m_options);
    layout->addWidget(m_previewBox, 1);
    auto *scroll = new QScrollArea;
    scroll->setWidget(panel);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the panel is measured before the other bar comes
    scroll->setMinimumWidth(kPanelWidth);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    return scroll;
}

QWidget *ResultsView::makeButtons()
{
    auto *bar = new BannerView(QStringLiteral(":/art/downBG.png"));
    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(16, 14, 16, 14);
    m_backButton->setFlat(true);
    m_ignoreButton->setFlat(true);
    m_backButton->setIcon(symbol(QStringLiteral("go-previous")));
    m_openContactButton->setIcon(symbol(QStringLiteral("x-office-address-book")));
    m_fixButton->setIcon(symbol(QStringLiteral("object-select"), ColourRole::OnAccent));
    layout->addWidget(m_backButton);
    layout->addStretch();
    layout->addWidget(m_ignoreButton);
    layout->addWidget(m_openContactButton);
    layout->addWidget(m_fixAllButton);
    layout->addWidget(m_fixButton);
    m_fixButton->setProperty(kPrimaryProperty, true);
    m_buttonBar = new ButtonBar({m_backButton, m_ignoreButton, m_openContactButton, m_fixAllButton, m_fixButton}, bar);
    connect(
        m_ignoreButton, &QPushButton::clicked, this, [this] { Q_EMIT ignoreRequested({m_controller.selectedItem()}); });
    connect(m_fixAllButton, &QPushButton::clicked, this, &ResultsView::fixAll);
    connect(m_backButton, &QPushButton::clicked, &m_controller, &OutlineViewController::backClicked);
    connect(m_openContactButton, &QPushButton::clicked, &m_controller, &OutlineViewController::openInContacts);
    connect(m_fixButton, &QPushButton::clicked, &m_controller, &OutlineViewController::fixClick);
    connect(
        compareButton(), &QPushButton::clicked, this, [this] { Q_EMIT comparisonRequested(m_previewBox->people()); });
    return bar;
}

void ResultsView::setUpActions()
{
    const auto add = [this](const QString &title, const QKeySequence &keys, const auto &action) {
        auto *added = new QAction(title, this); // the menu shows it with its keys
        added->setShortcut(keys);
        connect(added, &QAction::triggered, this, action);
        addAction(added);
        return added;
    };
    const auto addForButton = [&](const QString &title, const QKeySequence &keys, QPushButton *button) {
        button->setToolTip(withKeys(button->text(), keys));
        QAction *action = add(title, keys, [button] { button->click(); });
        action->setAutoRepeat(false); // a key held too long would repair the next findings too
        return action;
    };
    addForButton(m_fixButton->text(), QKeySequence(Qt::CTRL | Qt::Key_Return), m_fixButton);
    addForButton(m_backButton->text(), QKeySequence(Qt::ALT | Qt::Key_Left), m_backButton);
    addForButton(m_openContactButton->text(), QKeySequence(Qt::CTRL | Qt::Key_O), m_openContactButton);
    add(tr("&Next Finding"), QKeySequence(Qt::ALT | Qt::Key_Down), [this] { m_tree->selectNeighbour(false); });
    add(tr("&Previous Finding"), QKeySequence(Qt::ALT | Qt::Key_Up), [this] { m_tree->selectNeighbour(true); });
    m_fixAllAction =
        addForButton(tr("Fix &All ..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Return), m_fixAllButton);
    m_fixAllButton->setToolTip(withKeys(tr("Fix all of the group"), m_fixAllAction->shortcut()));
    m_compareAction =
        addForButton(tr("Co&mpare Contacts ..."), QKeySequence(Qt::CTRL | Qt::Key_M), m_previewBox->compareButton());
    m_previewBox->compareButton()->setToolTip(withKeys(tr("Compare and merge"), m_compareAction->shortcut()));
    m_ignoreAction = addForButton(tr("&Ignore"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I), m_ignoreButton);
    connect(m_tree, &QTreeView::activated, this, [this](const QModelIndex &index) {
        if (!index.data(ResultTree::IsGroupRole).toBool())
            m_fixButton->setFocus();
    });
    connect(m_filter, &QLineEdit::textChanged, &m_controller, &OutlineViewController::setFilter);
    connect(m_filter, &QLineEdit::returnPressed, this, [this] { m_tree->setFocus(); });
    auto *showAll = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    showAll->setContext(Qt::WidgetWithChildrenShortcut);
    connect(showAll, &QShortcut::activated, this, [this] {
        m_filter->clear();
        m_tree->setFocus();
    });
}

void ResultsView::followController()
{
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &current) {
        if (const PersonItemPtr item = m_shown->nodeAt(current); item != m_controller.selectedItem())
            m_controller.selectItem(item);
    });
    connect(m_tree, &QTreeView::collapsed, this,
        [this](const QModelIndex &index) { m_controller.setItemExpanded(m_shown->nodeAt(index), false); });
    connect(m_tree, &QTreeView::expanded, this,
        [this](const QModelIndex &index) { m_controller.setItemExpanded(m_shown->nodeAt(index), true); });
    connect(&m_controller, &OutlineViewController::itemExpanded, this, &ResultsView::openGroups);
    connect(&m_controller, &OutlineViewController::filterChanged, this, [this] {
        openGroups();
        showSelection();
        showCount();
    });
    connect(&m_controller, &OutlineViewController::fixed, this, &ResultsView::tellOfRepair);
    connect(m_shown, &QAbstractItemModel::rowsRemoved, this, &ResultsView::showCount);
    connect(m_shown, &QAbstractItemModel::rowsInserted, this, [this] {
        openGroups();
        showCount();
    });
    connect(&m_controller, &OutlineViewController::selectionChanged, this, &ResultsView::showSelection);
    connect(&m_controller, &OutlineViewController::detailPanelChanged, this, &ResultsView::showPanel);
    connect(&m_controller, &OutlineViewController::previewChanged, this, &ResultsView::showPreview);
    connect(m_previewBox, &PreviewBox::pageChanged, this, &ResultsView::showPlaces);
}

QPushButton *ResultsView::compareButton() const
{
    return m_previewBox->compareButton();
}

QPushButton *ResultsView::compareTab() const
{
    return m_previewBox->compareTab();
}

QList<QWidget *> ResultsView::panes() const
{
    return {m_tree, m_options->checkedOption(), m_previewBox->currentPage(),
        m_fixButton->isEnabled() ? m_fixButton : m_backButton, m_filter};
}

void ResultsView::refresh()
{
    m_tree->expandAll(); // as they are at first; one after the other would take longer
    showCount();
    m_controller.selectRow(1);
}

void ResultsView::resume()
{
    openGroups();
    showCount();
    if (m_controller.selectedItem()) {
        showSelection();
        m_controller.outlineViewSelectionDidChange();
    } else if (m_controller.showsTips()) {
        showPanel();
    } else {
        m_controller.selectRow(1);
    }
}

void ResultsView::showSelection()
{
    const QModelIndex index = m_shown->indexOf(m_controller.selectedItem());
    if (m_tree->currentIndex() != index || !m_tree->selectionModel()->isSelected(index))
        m_tree->setCurrentIndex(index);
    if (index.isValid() && index.row() == 0)
        m_tree->scrollTo(index.parent()); // its title too
    if (index.isValid())
        m_tree->scrollTo(index);
}

void ResultsView::showPanel()
{
    showCount();
    m_tree->viewport()->update(); // a repair may leave findings of people who are gone
    const DetailPanel &panel = m_controller.detailPanel();
    m_problem->setText(panel.problemText);
    showTips();
    const PersonItemPtr &item = m_controller.selectedItem();
    m_previewBox->setPeople(item ? peopleToCompare(*item) : QList<ABPersonPtr>());
    m_compareAction->setEnabled(m_previewBox->people().size() > 1);
    m_openContactButton->setEnabled(m_controller.buttonsEnabled());
    m_head->showFinding(panel, item.get());
    m_fixButton->setAccessibleDescription(item ? item->whyNotFixable() : QString());
    m_fixButton->setEnabled(m_controller.canFix() && !ABAddressBook::isSharedReadOnly());
    m_options->showOptions(m_tree, m_preview);
    showFixAll();
    showIgnore();
}

/// Where the contacts stand side by side, they show themselves how they differ.
void ResultsView::showPlaces()
{
    const PersonItemPtr &item = m_controller.selectedItem();
    const bool isShown = item && !item->isRootNode() && !item->isGone() && !m_previewBox->compares();
    m_places->setPlaces(isShown ? problemPlaces(item->finding()) : std::vector<ProblemPlace>());
}

void ResultsView::showTips()
{
    if (!m_controller.showsTips())
        m_side->setCurrentIndex(0);
    else
        m_side->setCurrentWidget(m_controller.isFiltered() ? m_noMatch : m_tips);
}

void ResultsView::showPreview()
{
    m_preview->setDocument(m_controller.preview());
    m_previewBox->setLeftBehind(m_controller.leftBehind());
    showFixAll();
}

/// Of a finding of several contacts it says what will be remembered of them.
void ResultsView::showIgnore()
{
    const PersonItemPtr &item = m_controller.selectedItem();
    const bool areSeveral = item && isOfSeveral(item->finding().condition);
    m_ignoreButton->setEnabled(item && m_controller.canFix() && !ABAddressBook::isSharedReadOnly()
        && (!areSeveral || m_previewBox->people().size() > 1));
    m_ignoreButton->setText(areSeveral ? tr("Different People") : tr("Ignore"));
    m_ignoreButton->setToolTip(
        withKeys(areSeveral ? tr("These are different people") : tr("This is fine: hide it until it changes"),
            m_ignoreAction->shortcut()));
    m_ignoreAction->setText(areSeveral ? tr("These Are D&ifferent People") : tr("&Ignore"));
    m_ignoreAction->setEnabled(m_ignoreButton->isEnabled());
}

/// Where it would do something: not where the contacts are only opened to be edited.
void ResultsView::showFixAll()
{
    const PersonItemPtr &item = m_controller.selectedItem();
    const auto group = m_controller.detailPanel().optionGroup;
    const int count = m_shown->rowCount(m_shown->indexOf(item).parent());
    const bool isPossible = item && m_controller.buttonsEnabled() && group && !ABAddressBook::isSharedReadOnly()
        && m_controller.currentOption(*group) != kEditInContacts;
    m_fixAllButton->setText(isPossible ? tr("Fix All %L1 ...").arg(count) : tr("Fix All ..."));
    m_fixAllButton->setEnabled(isPossible);
    m_fixAllAction->setEnabled(isPossible);
}

void ResultsView::fixAll()
{
    const PersonItemPtr &item = m_controller.selectedItem();
    QList<PersonItemPtr> findings = m_controller.shownFindings(item->parentNode());
    findings.removeIf([](const PersonItemPtr &finding) { return finding->isGone(); });
    if (findings.isEmpty())
        return;
    const QScopedValueRollback fixing(m_isFixingAll, true);
    const auto ignore = [this](const QList<PersonItemPtr> &chosen) { Q_EMIT ignoreRequested(chosen); };
    if (const QString what = ::fixAll(m_controller, findings, *this, ignore); !what.isEmpty())
        Q_EMIT repaired(what);
    if (item && item->isGone()) // nothing can be done there
        m_tree->selectNeighbour(false);
}

void ResultsView::tellOfRepair(const FixOutcome &outcome, const PersonItemPtr &finding)
{
    if (m_isFixingAll || outcome.cancelled || outcome.error)
        return;
    FixReport report;
    report.count(FixAll::End::Repaired, outcome);
    const OptionGroup group = conditionGroup(finding->finding().condition).optionGroup;
    if (const QString what = pastOfRepair(m_controller.currentOption(group), report); !what.isEmpty())
        Q_EMIT repaired(what);
}

/// Groups that come back to the view are closed in it.
void ResultsView::openGroups()
{
    for (const auto &group : m_controller.rootNodes())
        m_tree->setExpanded(m_shown->indexOf(group), m_controller.isItemExpanded(group));
}

void ResultsView::showCount()
{
    m_filter->setPlaceholderText(
        tr("Filter %1").arg(counted(m_controller.findingCount(), tr("finding"), tr("findings"))));
    const qsizetype total = m_controller.totalCount();
    const QString done = tr("%L1 of %L2 done").arg(total - m_controller.findingCount()).arg(total);
    const qsizetype ignored = m_controller.ignoredCount();
    m_list->setCount(ignored > 0 ? tr("%1, %L2 ignored").arg(done).arg(ignored) : done);
    showFixAll();
}
