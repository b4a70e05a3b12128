// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/BookStatus.h"

#include "app/look/Controls.h"

#include <QAccessibleWidget>
#include <QDir>
#include <QHBoxLayout>
#include <QPainter>
#include <QToolButton>

namespace {

constexpr std::chrono::seconds kMessageTime(20);
constexpr int kMargin = 14; // in line with the search field

/// Stands out from the bar by the colours of the other scheme.
class Toast : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange || event->type() == QEvent::Show) {
            for (QWidget *child : findChildren<QWidget *>())
                child->setPalette(otherPalette());
        }
        return QWidget::event(event);
    }

    void paintEvent(QPaintEvent *) override
    {
        constexpr int radius = 8;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(otherPalette().window());
        painter.drawRoundedRect(rect().adjusted(0, 0, -kMargin, 0), radius, radius);
    }

private:
    QPalette otherPalette() const { return paletteOf(palette().color(QPalette::Window).lightness() >= 128); }
};

} // namespace

BookStatus::BookStatus(QWidget *parent)
    : QStatusBar(parent)
    , m_name(new ElidedLabel(this))
    , m_summary(new QLabel(this))
    , m_giveUp(new QToolButton(this))
    , m_failure(new QToolButton(this))
    , m_toast(new Toast(this))
    , m_message(new ElidedLabel(m_toast))
    , m_undo(new QToolButton(m_toast))
{
    m_failure->setAutoRaise(true);
    m_failure->setVisible(false);
    m_failure->setIcon(symbol(QStringLiteral("dialog-warning"), ColourRole::Warning));
    m_failure->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(m_failure, &QToolButton::clicked, this, [this] {
        m_failure->hide();
        Q_EMIT failurePressed();
    });
    m_giveUp->setText(tr("Cancel"));
    m_giveUp->setAccessibleName(tr("Cancel opening"));
    m_giveUp->hide();
    connect(m_giveUp, &QToolButton::clicked, this, &BookStatus::openingGivenUp);
    setSizeGripEnabled(false);
    setMinimumHeight(32);
    for (QLabel *label : {m_name, m_summary}) {
        label->setContentsMargins(kMargin, 0, kMargin, 0);
        label->setForegroundRole(QPalette::PlaceholderText);
    }
    addWidget(m_name);
    addWidget(m_giveUp);
    setUpMessage();
    addPermanentWidget(m_failure);
    addPermanentWidget(m_summary);
}

void BookStatus::setUpMessage()
{
    // With this role a screen reader says what it shows.
    QAccessible::registerAccessibleInterface(new QAccessibleWidget(m_message, QAccessible::Notification));
    m_undo->setText(tr("Undo"));
    m_undo->setAutoRaise(true);
    m_undo->setFocusPolicy(Qt::NoFocus); // Ctrl+Z does the same
    m_messageTime.setSingleShot(true);
    m_messageTime.setInterval(kMessageTime);
    const auto hide = [this] {
        m_message->hide();
        m_undo->hide();
        m_toast->hide();
    };
    auto *layout = new QHBoxLayout(m_toast);
    layout->setContentsMargins(12, 2, kMargin + 12, 2);
    layout->addWidget(m_message);
    layout->addWidget(m_undo);
    hide();
    connect(&m_messageTime, &QTimer::timeout, this, hide);
    connect(m_undo, &QToolButton::clicked, this, hide);
    connect(m_undo, &QToolButton::clicked, this, &BookStatus::undoPressed);
    addPermanentWidget(m_toast);
}

void BookStatus::setMessage(const QString &done, bool canUndo)
{
    m_message->setText(done);
    m_message->setToolTip(done);
    m_message->setAccessibleName(done);
    m_message->hide(); // each one is shown as a new one, or it would not be read out
    m_message->show();
    m_undo->setVisible(canUndo);
    m_toast->show();
    m_messageTime.start();
}

void BookStatus::setName(const QString &name)
{
    const QString home = QDir::homePath() % u'/';
    m_name->setText(name.startsWith(home) ? QStringLiteral("~/") % name.sliced(home.size()) : name);
    m_name->setToolTip(name);
    m_giveUp->hide();
}

void BookStatus::setSummary(const QString &summary)
{
    m_summary->setText(summary);
}

void BookStatus::setReadOnly(const QString &reason)
{
    m_name->setText(tr("%1 (read-only)").arg(m_name->text()));
    m_name->setToolTip(reason);
    m_name->setAccessibleDescription(reason);
}

void BookStatus::setOpening(qint64 done, qint64 total)
{
    m_name->setText(total > 0 ? tr("Opening: %L1 of %L2 contacts").arg(done).arg(total) : tr("Opening ..."));
    m_giveUp->show();
}

void BookStatus::setFailure(const QString &newest)
{
    constexpr int kMostLetters = 60; // or the status bar would make the window wider
    const QFontMetrics metrics = m_failure->fontMetrics();
    const QString shown =
        metrics.elidedText(newest.simplified(), Qt::ElideMiddle, kMostLetters * metrics.averageCharWidth());
    m_failure->setText(QString(shown).replace(u'&', QStringLiteral("&&")));
    m_failure->setToolTip(newest);
    m_failure->setAccessibleName(tr("Failed: %1").arg(newest));
    m_failure->setVisible(!newest.isEmpty());
}
