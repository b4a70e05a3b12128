// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/OutsideWatch.h"

#include "base/Job.h"

#include <QCoreApplication>
#include <QPointer>

namespace {

constexpr std::chrono::milliseconds kDelay(200);

} // namespace

OutsideWatch::OutsideWatch()
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(kDelay);
    connect(&m_delay, &QTimer::timeout, this, &OutsideWatch::look);
}

OutsideWatch::~OutsideWatch()
{
    if (m_book)
        m_book->setChangeListener({});
}

void OutsideWatch::watch(std::shared_ptr<ABAddressBook> book)
{
    if (m_book)
        m_book->setChangeListener({});
    m_book = std::move(book);
    if (!m_book)
        return;
    // The call may come on another thread, and when this is gone.
    m_book->setChangeListener([self = QPointer(this)] {
        QMetaObject::invokeMethod(QCoreApplication::instance(), [self] {
            if (self && !self->m_delay.isActive())
                self->m_delay.start();
        });
    });
}

void OutsideWatch::look()
{
    if (m_reader.isRunning()) { // it may have looked before this change came
        m_delay.start();
        return;
    }
    m_reader.start([book = m_book] { return book->refresh(); },
        [this, book = m_book](const Result<std::vector<QString>> &uids) {
            if (book != m_book)
                return; // another one is watched by now
            if (!uids)
                Q_EMIT failed(uids.error().description());
            else if (!uids->empty())
                Q_EMIT changed(QStringList(uids->begin(), uids->end()));
        });
}
