// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/IgnoredWindow.h"

#include "contacts/model/NameTexts.h"
#include "fix/IgnoredFindings.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>

namespace {

constexpr QSize kFirstSize(680, 460);

QString namesOf(const QStringList &uids)
{
    const auto book = ABAddressBook::sharedAddressBook();
    QStringList names;
    for (const QString &uid : uids) {
        const ABPersonPtr person = book ? book->personWithUniqueId(uid) : nullptr;
        const QString name = person ? readableName(*person->record()).simplified() : QString();
        names += !person     ? IgnoredWindow::tr("no longer in the address book")
            : name.isEmpty() ? IgnoredWindow::tr("No name")
                             : name;
    }
    return names.join(QStringLiteral("  ·  "));
}

} // namespace

IgnoredWindow::IgnoredWindow(QWidget *parent)
    : ListWindow(tr("Ignored Findings"), kFirstSize, parent)
    , m_list(new QTreeWidget(this))
    , m_bringBack(new QPushButton(tr("&Bring Back"), this))
{
    setUpList();
    connect(m_bringBack, &QPushButton::clicked, this, &IgnoredWindow::bringBack);
    setContent(m_list, m_bringBack, tr("Nothing is ignored"), tr("Findings that you ignore are listed here."));
    m_list->setFocus();
    reload();
}

void IgnoredWindow::setUpList()
{
    m_list->setAccessibleName(windowTitle());
    m_list->setHeaderLabels({tr("Contacts"), tr("What is ignored")});
    m_list->header()->resizeSection(0, kFirstSize.width() / 2);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this,
        [this] { m_bringBack->setEnabled(!m_list->selectedItems().isEmpty() && !ABAddressBook::isSharedReadOnly()); });
    m_bringBack->setEnabled(false);
}

void IgnoredWindow::reload()
{
    using All = Result<std::vector<Ignored>>;
    m_reader.restart(
        [book = ABAddressBook::sharedAddressBook()] { return book ? book->ignored() : All(noAddressBook()); },
        [this](const All &ignored) { showIgnored(ignored); });
}

void IgnoredWindow::showIgnored(const Result<std::vector<Ignored>> &ignored)
{
    m_list->clear();
    QList<QTreeWidgetItem *> rows;
    m_entries = ignored ? *ignored : std::vector<Ignored>();
    for (const Ignored &entry : m_entries) {
        auto *row = new QTreeWidgetItem({namesOf(entry.uids), textOf(entry).simplified()});
        for (const int column : {0, 1}) {
            row->setToolTip(column, row->text(column));
            row->setData(column, Qt::AccessibleTextRole, tr("%1: %2").arg(row->text(0), row->text(1)));
        }
        rows += row;
    }
    m_list->addTopLevelItems(rows);
    if (!rows.isEmpty())
        m_list->setCurrentItem(rows.front());
    setEmpty(ignored && rows.isEmpty());
    say(ignored ? QString() : ignored.error().description());
    Q_EMIT loaded();
}

void IgnoredWindow::bringBack()
{
    QStringList ids;
    std::vector<Ignored> entries;
    for (QTreeWidgetItem *row : m_list->selectedItems()) {
        entries.push_back(m_entries[std::size_t(m_list->indexOfTopLevelItem(row))]);
        ids += entries.back().id();
    }
    if (entries.empty()) // the list was emptied since, which emits no signal
        return;
    m_writer.start(
        [ids, book = ABAddressBook::sharedAddressBook()] {
            return book ? book->changeIgnored({}, ids) : Result<void>(noAddressBook());
        },
        [this, entries](const Result<void> &done) {
            if (done) {
                reload();
                Q_EMIT broughtBack(entries);
                return;
            }
            say(done.error().description());
            Q_EMIT failed(done.error().description());
        });
}
