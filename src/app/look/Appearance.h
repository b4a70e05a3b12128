// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusVariant>
#include <QObject>

/// The application's colours, light or dark as the desktop is, also when it changes while the application runs.
class Appearance : public QObject
{
    Q_OBJECT

public:
    enum class Scheme { Light, Dark };

    /// Follows the desktop until setScheme() is called.
    explicit Appearance(QObject *parent = nullptr);

    /// For pictures and tests: this scheme, whatever the desktop has.
    void setScheme(Scheme scheme);
    Scheme scheme() const { return m_scheme; }

    /// A change of any setting of the desktop, from org.freedesktop.portal.Settings.
    Q_INVOKABLE void desktopSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

Q_SIGNALS:
    void schemeChanged(Appearance::Scheme scheme);

private:
    void followDesktop();
    void apply(Scheme scheme);

    Scheme m_scheme = Scheme::Light;
    bool m_isFixed = false;
};
