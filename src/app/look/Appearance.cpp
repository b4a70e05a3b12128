// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/Appearance.h"

#include "app/look/Colours.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kGroup = QStringLiteral("org.freedesktop.appearance");
const QString kKey = QStringLiteral("color-scheme");
constexpr uint kPrefersDark = 1; // 0: no preference, 2: prefers light

} // namespace

Appearance::Appearance(QObject *parent) : QObject(parent)
{
    const bool isDark = QApplication::palette().color(QPalette::Window).lightness() < 128;
    apply(isDark ? Scheme::Dark : Scheme::Light);
    followDesktop();
}

void Appearance::setScheme(Scheme scheme)
{
    m_isFixed = true;
    apply(scheme);
}

void Appearance::followDesktop()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    qRegisterMetaType<QDBusVariant>(); // or the bus does not know it in the signal below
    bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
        SLOT(desktopSettingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    question.setArguments({kGroup, kKey});
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid())
            desktopSettingChanged(kGroup, kKey, reply.value());
        answer->deleteLater();
    });
}

void Appearance::desktopSettingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (m_isFixed || group != kGroup || key != kKey)
        return;
    QVariant setting = value.variant();
    if (setting.canConvert<QDBusVariant>()) // Read() wraps its answer twice
        setting = setting.value<QDBusVariant>().variant();
    apply(setting.toUInt() == kPrefersDark ? Scheme::Dark : Scheme::Light);
}

void Appearance::apply(Scheme scheme)
{
    m_scheme = scheme;
    const bool isDark = scheme == Scheme::Dark;
    QApplication::setPalette(paletteOf(isDark));
    for (const char *list : {"QAbstractItemView", "QMenu", "QMenuBar"})
        QApplication::setPalette(listPaletteOf(isDark), list);
    Q_EMIT schemeChanged(scheme);
}
