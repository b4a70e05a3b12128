// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/likely/LikelyWindow.h"

#include "app/look/ContactPicture.h"
#include "app/look/Controls.h"
#include "app/look/Counted.h"
#include "app/look/StatePage.h"
#include "contacts/model/NameTexts.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QTreeWidget>

#include <algorithm>
#include <array>

namespace {

constexpr QSize kFirstSize(920, 640);
constexpr int kPictureSize = 28;
constexpr int kRowHeight = 40;

constexpr std::array kGradeTitles{QT_TRANSLATE_NOOP("LikelyWindow", "Certain"),
    QT_TRANSLATE_NOOP("LikelyWindow", "Likely"), QT_TRANSLATE_NOOP("LikelyWindow", "Possible")};

QString nameOf(const ABPerson &person)
{
    const QString name = readableName(*person.record()).simplified();
    return name.isEmpty() ? LikelyWindow::tr("No name") : name;
}

/// A contact in a tree, or the group that it is the first of. Its picture is made when it is first shown.
class ContactItem : public QTreeWidgetItem
{
public:
    ContactItem(QTreeWidgetItem *parent, ABPersonPtr person) : QTreeWidgetItem(parent), m_person(std::move(person)) { }

    QVariant data(int column, int role) const override
    {
        if (column != 0 || role != Qt::DecorationRole)
            return QTreeWidgetItem::data(column, role);
        const QPixmap picture = personPicture(m_person->imageData().value_or(QByteArray()), kPictureSize,
            treeWidget()->devicePixelRatioF(), m_person->uniqueId());
        QIcon icon(picture);
        icon.addPixmap(picture, QIcon::Selected); // or it is tinted
        return icon;
    }

private:
    ABPersonPtr m_person;
};

/// What tells contacts of one name apart.
QString detailsOf(const PersonRecord &record)
{
    QStringList details;
    if (const QString *company = record.text(kABOrganizationProperty))
        details += *company;
    for (const ABProperty property : {kABEmailProperty, kABPhoneProperty}) {
        const ABMultiValue *values = record.multiValue(property);
        for (const auto &entry : values ? values->entries() : std::span<const ABMultiValue::Entry>())
            details += entry.text();
    }
    return details.join(QStringLiteral("  ·  ")).simplified();
}

/// Each once, in their order.
QString reasonsOf(const LikelyGroup &group)
{
    QStringList reasons;
    for (const LikenessReason &reason : group.reasons)
        reasons += reason.says;
    reasons.removeDuplicates();
    return reasons.join(QStringLiteral("  ·  "));
}

} // namespace

LikelyWindow::LikelyWindow(QSet<QString> among, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_among(std::move(among))
    , m_pages(new QStackedWidget(this))
    , m_sentence(new QLabel(this))
    , m_progress(new QProgressBar(this))
    , m_empty(new StatePage(QStringLiteral("emptySearch"), this))
    , m_groups(new QTreeWidget(this))
    , m_message(new WrappedText(Qt::LeftToRight, this))
    , m_different(new QPushButton(symbol(QStringLiteral("view-conceal")), tr("&These Are Different People"), this))
    , m_compare(new QPushButton(tr("&Compare and Merge ..."), this))
{
    setWindowTitle(tr("Likely Duplicates"));
    setFirstSize(*this, kFirstSize);
    setUpGroups();
    auto *close = new QPushButton(tr("Close"));
    close->setProperty(kPrimaryProperty, true);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    m_empty->addButton(close);
    m_pages->addWidget(makeProgress());
    m_pages->addWidget(m_groups);
    m_pages->addWidget(m_empty);
    auto *layout = innerLayout<QVBoxLayout>(this);
    layout->addWidget(makeHeader());
    layout->addWidget(m_pages, 1);
    layout->addWidget(makeFoot());
    connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this, &QWidget::close);
    showSelection();
    search();
}

QWidget *LikelyWindow::makeHeader()
{
    auto *title = new QLabel(m_among.isEmpty() ? windowTitle() : tr("New Contacts That You Seem to Have Already"));
    makeHeadline(title);
    m_sentence->setText(tr("These contacts are probably one person each, although they are written differently. "
                           "Nothing is merged until you say so."));
    m_sentence->setWordWrap(true);
    m_sentence->setForegroundRole(QPalette::PlaceholderText);
    m_sentence->hide();
    auto *header = new QWidget;
    auto *layout = new QVBoxLayout(header);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->setSpacing(4);
    layout->addWidget(title);
    layout->addWidget(m_sentence);
    return header;
}

QWidget *LikelyWindow::makeProgress()
{
    auto *text = new QLabel(tr("Comparing contacts ..."));
    m_progress->setAccessibleName(tr("Progress"));
    m_progress->setRange(0, 100);
    m_progress->setFixedWidth(320);
    auto *cancel = new QPushButton(tr("Cancel"));
    connect(cancel, &QPushButton::clicked, this, [this, cancel] {
        cancel->setEnabled(false);
        m_job.stop();
    });
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setSpacing(16);
    layout->addStretch();
    for (QWidget *widget :
        {static_cast<QWidget *>(text), static_cast<QWidget *>(m_progress), static_cast<QWidget *>(cancel)})
        layout->addWidget(widget, 0, Qt::AlignHCenter);
    layout->addStretch();
    return page;
}

QWidget *LikelyWindow::makeFoot()
{
    m_compare->setProperty(kPrimaryProperty, true);
    for (QPushButton *button : {m_different, m_compare})
        button->setAutoDefault(true); // Return presses it
    const QKeySequence keys(Qt::CTRL | Qt::SHIFT | Qt::Key_I); // as in the results
    connect(new QShortcut(keys, this), &QShortcut::activated, m_different, &QPushButton::click);
    m_different->setToolTip(
        tr("Remember this, and stop showing them together (%1)").arg(keys.toString(QKeySequence::NativeText)));
    connect(m_different, &QPushButton::clicked, this, &LikelyWindow::rememberDifferent);
    connect(m_compare, &QPushButton::clicked, this, [this] { Q_EMIT comparisonRequested(peopleOf(selectedGroup())); });
    auto *foot = new QWidget;
    auto *layout = new QHBoxLayout(foot);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(8);
    m_message->hide();
    layout->addWidget(m_message, 1);
    layout->addStretch();
    layout->addWidget(m_different);
    layout->addWidget(m_compare);
    return foot;
}

void LikelyWindow::setUpGroups()
{
    m_groups->setAccessibleName(tr("Groups of contacts that are probably one person"));
    m_groups->setHeaderLabels({tr("Contacts"), tr("Why")});
    m_groups->header()->setSectionResizeMode(0, QHeaderView::Interactive);
    m_groups->header()->resizeSection(0, kFirstSize.width() * 45 / 100);
    m_groups->setUniformRowHeights(true);
    m_groups->setIconSize({kPictureSize, kPictureSize});
    m_groups->setFrameShape(QFrame::NoFrame);
    m_groups->setExpandsOnDoubleClick(false);
    connect(m_groups, &QTreeWidget::itemExpanded, this, &LikelyWindow::showMembers);
    connect(m_groups, &QTreeWidget::itemSelectionChanged, this, &LikelyWindow::showSelection);
    connect(m_groups, &QTreeWidget::itemActivated, m_compare, &QPushButton::click);
}

void LikelyWindow::search()
{
    const auto work = [this, region = regionOfUser()](const std::stop_token &isCancelled) {
        const auto book = ABAddressBook::sharedAddressBook();
        if (!book)
            return Found{nullptr, {}, noAddressBook().description()};
        Found found{book->snapshot(), {}, {}};
        const auto ignored = IgnoredFindings::of(*book);
        if (!ignored)
            return Found{nullptr, {}, ignored.error().description()};
        int shown = -1;
        const auto progress = [&](double done) {
            if (const int percent = int(100 * done); std::exchange(shown, percent) != percent)
                Job::deliver(this, [this, percent] { m_progress->setValue(percent); });
            return !isCancelled.stop_requested();
        };
        found.duplicates = findLikelyDuplicates(
            *found.people, LikenessGrade::Possible, region, progress, differenceAmong(*found.people, *ignored));
        return found;
    };
    m_job.start(work, [this](const Found &found) { showFound(found); });
}

void LikelyWindow::showFound(const Found &found)
{
    for (const LikelyGroup &group : found.duplicates.groups) {
        const auto isMeant = [&](std::size_t member) {
            return m_among.contains((*found.people)[member].person->uniqueId());
        };
        if (m_among.isEmpty() || std::ranges::any_of(group.members, isMeant))
            addGroup(group, found.people);
    }
    if (m_groups->topLevelItemCount() > 0) {
        m_groups->setCurrentItem(m_groups->topLevelItem(0)->child(0));
        m_groups->setFocus();
    }
    if (!found.error.isNull() || found.duplicates.isCancelled)
        m_empty->say(found.error.isNull() ? tr("Cancelled.") : found.error);
    else
        m_empty->say(tr("No two contacts look like one person."),
            {tr("Names, phone numbers and addresses were compared in every way they may be written.")});
    if (found.duplicates.crowded > 0) {
        m_message->setText(tr("%1 have something in common with more than 40 others each: of these, only those next to "
                              "each other by name were compared.")
                               .arg(counted(found.duplicates.crowded, tr("contact"), tr("contacts"))));
        m_message->setAccessibleName(m_message->text());
        m_message->show();
    }
    showCounts();
    Q_EMIT ended();
}

void LikelyWindow::addGroup(const LikelyGroup &group, const PeopleSnapshot &people)
{
    const auto grade = int(group.grade);
    QTreeWidgetItem *title = nullptr;
    for (int row = 0; row < m_groups->topLevelItemCount() && !title; ++row) {
        if (m_groups->topLevelItem(row)->data(0, Qt::UserRole) == grade)
            title = m_groups->topLevelItem(row);
    }
    if (!title) {
        title = new QTreeWidgetItem(m_groups);
        title->setData(0, Qt::UserRole, grade);
        title->setFlags(Qt::ItemIsEnabled);
        title->setFirstColumnSpanned(true);
        title->setSizeHint(0, {0, kRowHeight});
        QFont bold = m_groups->font();
        bold.setBold(true);
        title->setFont(0, bold);
        title->setExpanded(group.grade != LikenessGrade::Possible);
    }
    QStringList names;
    QList<ABPersonPtr> members;
    for (const std::size_t member : group.members) {
        members += (*people)[member].person;
        names += nameOf(*members.back());
    }
    auto *item = new ContactItem(title, members.front());
    item->setText(0, names.join(QStringLiteral("  ·  ")));
    item->setText(1, reasonsOf(group));
    item->setToolTip(0, names.join(u'\n'));
    item->setToolTip(1, item->text(1));
    item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    m_people.insert(item, members);
}

/// Only once somebody wants to see them: there may be tens of thousands.
void LikelyWindow::showMembers(QTreeWidgetItem *item)
{
    if (item->childCount() > 0)
        return;
    for (const ABPersonPtr &person : peopleOf(item)) {
        auto *member = new ContactItem(item, person);
        member->setText(0, nameOf(*person));
        member->setText(1, detailsOf(*person->record()));
        member->setToolTip(1, member->text(1));
    }
}

QTreeWidgetItem *LikelyWindow::selectedGroup() const
{
    QTreeWidgetItem *item = m_groups->selectedItems().value(0);
    while (item && !m_people.contains(item))
        item = item->parent();
    return item;
}

QList<ABPersonPtr> LikelyWindow::peopleOf(const QTreeWidgetItem *group) const
{
    return m_people.value(group);
}

void LikelyWindow::showSelection()
{
    const bool isAny = selectedGroup() != nullptr;
    m_compare->setEnabled(isAny);
    m_different->setEnabled(isAny && !ABAddressBook::isSharedReadOnly());
}

void LikelyWindow::rememberDifferent()
{
    QTreeWidgetItem *group = selectedGroup();
    QStringList uids;
    for (const ABPersonPtr &person : peopleOf(group))
        uids += person->uniqueId();
    removeGroup(group);
    showCounts();
    Q_EMIT differentPeople(uids);
}

/// Selects the next one, or the one before.
void LikelyWindow::removeGroup(QTreeWidgetItem *group)
{
    QTreeWidgetItem *grade = group->parent();
    m_people.remove(group);
    m_empty->say(tr("No group is left."), {tr("You have looked at all of them.")});
    const int row = grade->indexOfChild(group);
    delete group;
    if (grade->childCount() == 0)
        delete grade;
    else
        m_groups->setCurrentItem(grade->child(std::min(row, grade->childCount() - 1)));
    if (!selectedGroup() && m_groups->topLevelItemCount() > 0)
        m_groups->setCurrentItem(m_groups->topLevelItem(0)->child(0));
}

void LikelyWindow::leaveOut(const QStringList &different)
{
    const auto isDifferent = [&](const ABPersonPtr &person) { return different.contains(person->uniqueId()); };
    QList<QTreeWidgetItem *> emptied;
    for (auto group = m_people.cbegin(); group != m_people.cend(); ++group) {
        const auto left = std::ranges::count_if(*group, [](const auto &person) { return !person->isRemoved(); });
        if (left < 2 || std::ranges::all_of(*group, isDifferent))
            emptied += const_cast<QTreeWidgetItem *>(group.key());
    }
    for (QTreeWidgetItem *group : emptied)
        removeGroup(group);
    showCounts();
}

void LikelyWindow::showCounts()
{
    for (int row = 0; row < m_groups->topLevelItemCount(); ++row) {
        QTreeWidgetItem *grade = m_groups->topLevelItem(row);
        const char *title = kGradeTitles.at(std::size_t(grade->data(0, Qt::UserRole).toInt()));
        grade->setText(0, tr("%1 (%L2)").arg(tr(title)).arg(grade->childCount()));
    }
    const bool isEmpty = m_groups->topLevelItemCount() == 0;
    m_pages->setCurrentWidget(isEmpty ? static_cast<QWidget *>(m_empty) : m_groups);
    for (QWidget *widget : std::initializer_list<QWidget *>{m_sentence, m_different, m_compare})
        widget->setVisible(!isEmpty);
    showSelection();
}

QString LikelyWindow::message() const
{
    return m_empty->text();
}
