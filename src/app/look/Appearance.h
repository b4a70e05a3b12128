// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusVariant>
#include <QObject>

/// The application's colours, light or dark like the desktop, even when that changes while the application runs.
class Appearance : public QObject
{
    Q_OBJECT

public:
    enum class Scheme { Light, Dark };

    /// Follows the desktop until setScheme() is called.
    explicit Appearance(QObject *parent = nullptr);

    /// For pictures and tests: this scheme regardless of the desktop.
    void setScheme(Scheme scheme);
    Scheme scheme() const { return m_scheme; }

    /// Called by org.freedesktop.portal.Settings for every changed setting.
    Q_INVOKABLE void desktopSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

Q_SIGNALS:
    void schemeChanged(Appearance::Scheme scheme);

private:
    void followDesktop();
    void apply(Scheme scheme);

    Scheme m_scheme = Scheme::Light;
    bool m_isFixed = false;
};
