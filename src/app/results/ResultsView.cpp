// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/ResultsView.h"

#include "app/look/ContactPicture.h"
#include "app/look/Controls.h"
#include "app/look/Counted.h"
#include "app/results/FindingDelegate.h"
#include "app/results/FindingTree.h"
#include "app/results/PreviewView.h"
#include "contacts/book/ABAddressBook.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>

namespace {

constexpr int kPictureSize = 72;
constexpr int kPreviewHeight = 120; // at least; where the window is low, the panel scrolls

} // namespace

ResultsView::ResultsView(OutlineViewController &controller, QWidget *parent)
    : QWidget(parent)
    , m_controller(controller)
    , m_tree(new FindingTree(this))
    , m_count(new QLabel(this))
    , m_name(new WrappedText)
    , m_picture(new QLabel(this))
    , m_email(new WrappedText)
    , m_gone(new QLabel(tr("This contact is no longer in the address book."), this))
    , m_problem(new WrappedText(Qt::LeftToRight))
    , m_optionButtons(new QButtonGroup(this))
    , m_preview(new PreviewView(this))
    , m_side(new QStackedWidget(this))
    , m_openContactButton(new QPushButton(tr("Open In Contacts"), this))
    , m_backButton(new QPushButton(tr("Back"), this))
    , m_fixButton(new QPushButton(tr("Fix"), this))
{
    setUpTree();
    m_side->addWidget(makePanel());
    m_side->addWidget(makeTips());
    auto *left = new QWidget;
    auto *leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->addWidget(m_count);
    leftLayout->addWidget(m_tree, 1);
    auto *halves = new QSplitter;
    halves->addWidget(left);
    halves->addWidget(m_side);
    halves->setStretchFactor(1, 1);
    halves->setSizes({380, 620});
    halves->setChildrenCollapsible(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(halves, 1);
    layout->addWidget(makeButtons());
    setFocusProxy(m_tree);
    setUpKeys();
    followController();
}

void ResultsView::setUpTree()
{
    m_tree->setAccessibleName(tr("Findings"));
    m_tree->setModel(&m_controller.model());
    m_tree->setItemDelegate(new FindingDelegate(m_tree));
    m_tree->setHeaderHidden(true);
    m_tree->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tree->setAnimated(false);
    m_tree->setUniformRowHeights(true);
    m_tree->setExpandsOnDoubleClick(true);
}

QWidget *ResultsView::makePanel()
{
    QFont large = m_name->font();
    large.setBold(true);
    large.setPointSizeF(large.pointSizeF() * 1.3);
    m_name->setFont(large);
    m_picture->setFixedSize(kPictureSize, kPictureSize);
    m_gone->setWordWrap(true);
    auto *names = new QVBoxLayout;
    names->addWidget(m_name);
    names->addWidget(m_email);
    names->addWidget(m_gone);
    names->addStretch();
    auto *head = new QHBoxLayout;
    head->addWidget(m_picture, 0, Qt::AlignTop);
    head->addLayout(names, 1);

    auto *box = new QGroupBox(tr("Repair"));
    m_boxWithMatrix = box;
    m_options = new QVBoxLayout(box);
    auto *details = new QGroupBox(tr("Preview"));
    auto *detailsLayout = new QVBoxLayout(details);
    detailsLayout->addWidget(m_preview);
    auto *panel = new QWidget;
    auto *layout = new QVBoxLayout(panel);
    layout->addLayout(head);
    layout->addWidget(m_problem);
    layout->addWidget(box);
    layout->addWidget(details, 1);
    m_preview->setMinimumHeight(kPreviewHeight);
    auto *scroll = new QScrollArea;
    scroll->setWidget(panel);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    return scroll;
}

QWidget *ResultsView::makeTips()
{
    auto *tips = new QLabel;
    tips->setPixmap(QPixmap(QStringLiteral(":/art/tipsView.png")));
    tips->setAlignment(Qt::AlignCenter);
    tips->setAccessibleName(tr("Open a group to see its findings"));
    return tips;
}

QWidget *ResultsView::makeButtons()
{
    auto *bar = new BannerView(QStringLiteral(":/art/downBG.png"));
    auto *layout = new QHBoxLayout(bar);
    layout->addWidget(m_backButton);
    layout->addStretch();
    layout->addWidget(m_openContactButton);
    layout->addWidget(m_fixButton);
    m_buttonBar = new ButtonBar({m_backButton, m_openContactButton, m_fixButton}, bar);
    connect(m_backButton, &QPushButton::clicked, &m_controller, &OutlineViewController::backClicked);
    connect(m_openContactButton, &QPushButton::clicked, &m_controller, &OutlineViewController::openInContacts);
    connect(m_fixButton, &QPushButton::clicked, &m_controller, &OutlineViewController::fixClick);
    return bar;
}

void ResultsView::setUpKeys()
{
    const auto addKey = [this](const QKeySequence &keys, QPushButton *button) {
        connect(new QShortcut(keys, this), &QShortcut::activated, button, &QPushButton::click);
        button->setToolTip(tr("%1 (%2)").arg(button->text(), keys.toString(QKeySequence::NativeText)));
    };
    addKey(QKeySequence(Qt::CTRL | Qt::Key_Return), m_fixButton);
    addKey(QKeySequence(Qt::ALT | Qt::Key_Left), m_backButton);
    addKey(QKeySequence(Qt::CTRL | Qt::Key_O), m_openContactButton);
    connect(m_tree, &QTreeView::activated, this, [this](const QModelIndex &index) {
        if (!index.data(ResultTree::IsGroupRole).toBool())
            m_fixButton->setFocus();
    });
    for (int number = 1; number <= 4; ++number) { // no condition has more options
        auto *shortcut = new QShortcut(QKeySequence(Qt::ALT | Qt::Key(Qt::Key_0 + number)), this);
        connect(shortcut, &QShortcut::activated, this, [this, number] {
            if (QAbstractButton *option = m_optionButtons->button(number))
                option->click();
        });
    }
}

void ResultsView::followController()
{
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
        [this](const QModelIndex &current) { m_controller.selectItem(m_controller.model().nodeAt(current)); });
    connect(m_tree, &QTreeView::collapsed, this,
        [this](const QModelIndex &index) { m_controller.setItemExpanded(m_controller.model().nodeAt(index), false); });
    connect(m_tree, &QTreeView::expanded, this,
        [this](const QModelIndex &index) { m_controller.setItemExpanded(m_controller.model().nodeAt(index), true); });
    connect(&m_controller, &OutlineViewController::itemExpanded, m_tree, &QTreeView::expand);
    connect(&m_controller, &OutlineViewController::selectionChanged, this, &ResultsView::showSelection);
    connect(&m_controller, &OutlineViewController::detailPanelChanged, this, &ResultsView::showPanel);
    connect(&m_controller, &OutlineViewController::previewChanged, this,
        [this] { m_preview->setDocument(m_controller.preview()); });
}

QList<QWidget *> ResultsView::panes() const
{
    return {m_tree, m_optionButtons->checkedButton(), m_preview, m_fixButton->isEnabled() ? m_fixButton : m_backButton};
}

void ResultsView::refresh()
{
    m_tree->expandAll();
    showCount();
    m_controller.selectRow(1);
}

void ResultsView::showSelection()
{
    const PersonItemPtr &item = m_controller.selectedItem();
    const QModelIndex index = item ? m_controller.model().indexOfNode(item.get()) : QModelIndex();
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
    m_name->setText(panel.name);
    m_picture->setPixmap(personPicture(panel.picture, kPictureSize, devicePixelRatioF()));
    m_picture->setAccessibleName(tr("Picture of %1").arg(panel.name));
    m_email->setText(panel.email);
    m_email->setVisible(!panel.email.isEmpty());
    m_problem->setText(panel.problemText);
    m_side->setCurrentIndex(m_controller.showsTips() ? 1 : 0);
    m_openContactButton->setEnabled(m_controller.buttonsEnabled());
    m_gone->setVisible(m_controller.buttonsEnabled() && !m_controller.canFix());
    m_fixButton->setEnabled(m_controller.canFix() && !ABAddressBook::isSharedReadOnly());
    showOptions();
}

void ResultsView::showOptions()
{
    const auto group = m_controller.detailPanel().optionGroup;
    if (group == m_shownGroup)
        return;
    m_shownGroup = group;
    qDeleteAll(m_boxWithMatrix->findChildren<QRadioButton *>());
    if (!group)
        return;
    int number = 0;
    QWidget *before = m_tree;
    for (const QLatin1StringView title : optionGroupInfo(*group).titles) {
        auto *option = new QRadioButton(title, m_boxWithMatrix);
        option->setChecked(m_controller.currentOption(*group) == title);
        option->setToolTip(tr("Alt+%1").arg(++number));
        m_optionButtons->addButton(option, number);
        m_options->addWidget(option);
        setTabOrder(before, option);
        before = option;
        connect(option, &QRadioButton::clicked, this,
            [this, group, text = QString(title)] { m_controller.chooseOption(*group, text); });
    }
    setTabOrder(before, m_preview);
}

void ResultsView::showCount()
{
    m_count->setText(tr("%1 left").arg(counted(m_controller.findingCount(), tr("finding"), tr("findings"))));
}
