// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/AppFixture.h"

#include "app/look/Controls.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "support/TestPeople.h"

#include <QAccessible>
#include <QApplication>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>

namespace {

void findUnnamed(QAccessibleInterface *object, const QString &path, QStringList &unnamed)
{
    if (!object || !object->isValid())
        return;
    const QString here =
        path + u'/' + QString::fromLatin1(object->object() ? object->object()->metaObject()->className() : "row");
    const QString name = object->text(QAccessible::Name);
    const bool isFinding = path.endsWith(QStringLiteral("FindingTree")) && !object->state().expandable;
    if (object->state().focusable && !object->state().invisible
        && (name.isEmpty() || (isFinding && !name.contains(QStringLiteral(": ")))))
        unnamed += here;
    for (int i = 0; i < std::min(object->childCount(), 200); ++i)
        findUnnamed(object->child(i), here, unnamed);
}

} // namespace

Answer::Answer(const QString &button)
{
    connect(&m_timer, &QTimer::timeout, this, [this, button] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            const auto *box = qobject_cast<QMessageBox *>(widget);
            if (!box || !box->isVisible())
                continue;
            m_timer.stop();
            said = box->text() + u'|' + box->informativeText();
            for (QAbstractButton *candidate : box->buttons()) {
                if (candidate->text().startsWith(button))
                    return candidate->click();
            }
        }
    });
    m_timer.start(1);
}

void AppFixture::start(std::initializer_list<QByteArray> people)
{
    m_path = m_folder.filePath(QStringLiteral("book%1.sqlite").arg(++m_bookCount));
    {
        const auto book = *ABAddressBook::open(std::move(*SqliteStore::open(m_path)));
        for (const QByteArray &text : people) {
            const auto [uid, record] = recordFromText(text);
            book->addRecord(std::make_shared<ABPerson>(uid, record));
        }
        QVERIFY(book->save(nullptr, makeCause(ChangeCause::Kind::Import, QStringLiteral("people.vcf"))));
    }
    restart();
    QTRY_VERIFY(window().freshButton()->isEnabled());
    QVERIFY(QTest::qWaitForWindowActive(&window()));
}

void AppFixture::restart(bool opens)
{
    end();
    m_app = std::make_unique<AppDelegate>();
    QSignalSpy opened(m_app.get(), &AppDelegate::addressBookOpened);
    m_app->applicationDidFinishLaunching(m_path);
    QTRY_VERIFY(opened.count() >= 1); // what a rescue opens may be there already
    QCOMPARE(opened.front().front().toBool(), opens);
    if (opens)
        QTRY_COMPARE(m_app->loadContactsViewController().numberOfRowsInTableView(),
            int(ABAddressBook::sharedAddressBook()->people().size()));
}

void AppFixture::scan()
{
    window().scanButton()->click();
    QTRY_VERIFY(m_app->outlineViewController() && m_app->outlineViewController()->selectedItem());
}

void AppFixture::end()
{
    m_app.reset();
    ABAddressBook::setSharedAddressBook(nullptr);
}

QByteArray AppFixture::savedBook()
{
    return textOf(*ABAddressBook::sharedAddressBook());
}

QStringList unnamedIn(QWidget *window)
{
    QStringList unnamed;
    findUnnamed(QAccessible::queryAccessibleInterface(window), {}, unnamed);
    for (const QString &path : unnamed)
        qWarning("no name: %s", qPrintable(path));
    return unnamed;
}
