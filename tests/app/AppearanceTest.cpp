// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/Appearance.h"
#include "support/PrivateDesktop.h"

#include <QApplication>
#include <QDBusConnection>
#include <QTest>

/// What a desktop offers for its settings, with one.
class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    uint colourScheme = 0;

public Q_SLOTS:
    QDBusVariant Read(const QString &, const QString &) // wraps it twice
    {
        return QDBusVariant(QVariant::fromValue(QDBusVariant(colourScheme)));
    }

Q_SIGNALS:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);
};

class AppearanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsTheDesktop()
    {
        const PrivateDesktop desktop;
        if (!desktop.problem().isEmpty())
            QSKIP(qPrintable(desktop.problem()));
        Portal portal;
        portal.colourScheme = 1;
        QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal"));
        QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));

        const Appearance appearance;
        QTRY_COMPARE(appearance.scheme(), Appearance::Scheme::Dark);
        for (const uint scheme : {2U, 1U, 0U}) {
            Q_EMIT portal.SettingChanged(
                QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme"), QDBusVariant(scheme));
            QTRY_COMPARE(appearance.scheme(), scheme == 1 ? Appearance::Scheme::Dark : Appearance::Scheme::Light);
        }
    }
};

QTEST_MAIN(AppearanceTest)
#include "AppearanceTest.moc"
