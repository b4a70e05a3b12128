// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/Appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <array>

namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kGroup = QStringLiteral("org.freedesktop.appearance");
const QString kKey = QStringLiteral("color-scheme");
constexpr uint kPrefersDark = 1; // 0: no preference, 2: prefers light

/// One colour of both schemes.
struct Colour
{
    QPalette::ColorRole role;
    QRgb light;
    QRgb dark;
};

// Texts on their grounds have a contrast of at least 4.5:1 in both schemes; AppearanceTest measures it.
constexpr std::array kColours{
    Colour{QPalette::Window, 0xfff6f5f2, 0xff22252a},
    Colour{QPalette::WindowText, 0xff23262b, 0xffe8e6e1},
    Colour{QPalette::Base, 0xffffffff, 0xff1b1d21},
    Colour{QPalette::AlternateBase, 0xfff4f6f7, 0xff202328},
    Colour{QPalette::Text, 0xff23262b, 0xffe8e6e1},
    Colour{QPalette::Button, 0xffe9e7e2, 0xff30343b},
    Colour{QPalette::ButtonText, 0xff23262b, 0xffe8e6e1},
    Colour{QPalette::BrightText, 0xffb3261e, 0xffff8a80},
    Colour{QPalette::Highlight, 0xff20637a, 0xff3f8aa5},
    Colour{QPalette::HighlightedText, 0xffffffff, 0xff0e1113},
    Colour{QPalette::ToolTipBase, 0xff23262b, 0xffe8e6e1},
    Colour{QPalette::ToolTipText, 0xfff6f5f2, 0xff22252a},
    Colour{QPalette::PlaceholderText, 0xff63676d, 0xffa3a7ad},
    Colour{QPalette::Link, 0xff1a5b73, 0xff7cc3dc},
    Colour{QPalette::LinkVisited, 0xff5b4a86, 0xffb9a6e3},
    Colour{QPalette::Light, 0xffffffff, 0xff3b4048},
    Colour{QPalette::Midlight, 0xfff0eee9, 0xff343840},
    Colour{QPalette::Mid, 0xffc9c6bf, 0xff4a5059},
    Colour{QPalette::Dark, 0xffa8a59e, 0xff14161a},
    Colour{QPalette::Shadow, 0xff77746d, 0xff08090b},
};
constexpr QRgb kDisabledLight = 0xff8b8d90;
constexpr QRgb kDisabledDark = 0xff797d83;

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

QPalette Appearance::palette(Scheme scheme)
{
    QPalette palette;
    const bool isDark = scheme == Scheme::Dark;
    for (const Colour &colour : kColours)
        palette.setColor(colour.role, QColor::fromRgba(isDark ? colour.dark : colour.light));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor::fromRgba(isDark ? kDisabledDark : kDisabledLight));
    return palette;
}

void Appearance::followDesktop()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
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
    QApplication::setPalette(palette(scheme));
    Q_EMIT schemeChanged(scheme);
}
