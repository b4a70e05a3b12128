// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/BookObject.h"

namespace {

constexpr const char *kAddressBook = "org.gnome.evolution.dataserver.AddressBook";
constexpr const char *kFactory = "org.gnome.evolution.dataserver.AddressBookFactory";
constexpr const char *kFactoryPath = "/org/gnome/evolution/dataserver/AddressBookFactory";
constexpr const char *kSources = "org.gnome.evolution.dataserver.Sources";
constexpr const char *kProperties = "org.freedesktop.DBus.Properties";

/// The name with this prefix, which a version follows, in the list that a method of the bus returns; empty for none.
QByteArray nameOnBus(GDBusConnection *connection, const char *method, const char *prefix, CallGuard &guard)
{
    g_autoptr(GVariant) answer =
        g_dbus_connection_call_sync(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            method, nullptr, G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NONE, -1, guard.beginCall(), nullptr);
    if (!answer)
        return {};
    QByteArray found;
    g_autoptr(GVariantIter) names = nullptr;
    g_variant_get(answer, "(as)", &names);
    for (const char *name = nullptr; g_variant_iter_next(names, "&s", &name);) {
        if (g_str_has_prefix(name, prefix))
            found = name;
    }
    return found;
}

} // namespace

bool BookObject::isOffered(CallGuard &guard)
{
    g_autoptr(GDBusConnection) connection = g_bus_get_sync(G_BUS_TYPE_SESSION, guard.beginCall(), nullptr);
    if (!connection)
        return false;
    g_dbus_connection_set_exit_on_close(connection, FALSE);
    const char *method = "ListActivatableNames";
    return !g_dbus_connection_is_closed(connection) && !nameOnBus(connection, method, kAddressBook, guard).isEmpty()
        && !nameOnBus(connection, method, kSources, guard).isEmpty();
}

void BookObject::connect(GDBusConnection *connection, const QByteArray &sourceUid)
{
    disconnect();
    m_connection = connection;
    const QByteArray factory = nameOnBus(connection, "ListNames", kAddressBook, *m_guard);
    if (factory.isEmpty())
        return;
    g_autoptr(GVariant) opened = g_dbus_connection_call_sync(connection, factory.constData(), kFactoryPath, kFactory,
        "OpenAddressBook", g_variant_new("(s)", sourceUid.constData()), G_VARIANT_TYPE("(ss)"),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, m_guard->beginCall(), nullptr);
    if (!opened)
        return;
    const char *path = nullptr;
    const char *name = nullptr;
    g_variant_get(opened, "(&s&s)", &path, &name);
    m_path = path;
    m_name = name;
}

GVariant *BookObject::property(const char *name, GError **error) const
{
    if (m_path.isEmpty())
        return nullptr;
    g_autoptr(GVariant) answer = g_dbus_connection_call_sync(m_connection, m_name.constData(), m_path.constData(),
        kProperties, "Get", g_variant_new("(ss)", kAddressBook, name), G_VARIANT_TYPE("(v)"),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, m_guard->beginCall(), error);
    GVariant *value = nullptr;
    if (answer)
        g_variant_get(answer, "(v)", &value);
    return value;
}

QByteArray BookObject::revision(GError **error) const
{
    g_autoptr(GVariant) value = property("Revision", error);
    return value && g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) ? g_variant_get_string(value, nullptr) : "";
}

bool BookObject::isWritable() const
{
    g_autoptr(GVariant) value = property("Writable", nullptr);
    return value && g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) && g_variant_get_boolean(value);
}
