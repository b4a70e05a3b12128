// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/BookObject.h"

#include <gio/gio.h>

#include <utility>

namespace {

using Listener = std::function<void()>;

void forgetListener(gpointer listener)
{
    delete static_cast<Listener *>(listener);
}

/// The daemon's name is without an owner. Also told once at the begin where that is so already.
void daemonEnded(GDBusConnection * /*connection*/, const char * /*name*/, gpointer listener)
{
    (*static_cast<Listener *>(listener))();
}

} // namespace

QByteArray lastNameIn(GVariant *names, const char *prefix)
{
    QByteArray found;
    GVariantIter *iterator = nullptr;
    g_variant_get(names, "(as)", &iterator);
    for (const char *name = nullptr; g_variant_iter_next(iterator, "&s", &name);) {
        if (g_str_has_prefix(name, prefix))
            found = name;
    }
    g_variant_iter_free(iterator);
    return found;
}

void BookObject::connect(GDBusConnection *connection, const QByteArray &sourceUid)
{
    disconnect();
    m_connection = connection;
    GVariant *names =
        g_dbus_connection_call_sync(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "ListNames", nullptr, G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NONE, -1, m_guard->beginCall(), nullptr);
    if (!names)
        return;
    const QByteArray factory = lastNameIn(names, kAddressBookBusName);
    g_variant_unref(names);
    if (factory.isEmpty())
        return;
    GVariant *opened = g_dbus_connection_call_sync(connection, factory.constData(),
        "/org/gnome/evolution/dataserver/AddressBookFactory", "org.gnome.evolution.dataserver.AddressBookFactory",
        "OpenAddressBook", g_variant_new("(s)", sourceUid.constData()), G_VARIANT_TYPE("(ss)"),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, m_guard->beginCall(), nullptr);
    if (!opened)
        return;
    const char *path = nullptr;
    const char *name = nullptr;
    g_variant_get(opened, "(&s&s)", &path, &name);
    m_path = path;
    m_name = name;
    g_variant_unref(opened);
    subscribe();
}

void BookObject::disconnect()
{
    unsubscribe();
    m_path.clear();
}

void BookObject::setListener(Listener listener)
{
    unsubscribe();
    m_changed = std::move(listener);
    subscribe();
}

void BookObject::subscribe()
{
    if (!m_changed || m_path.isEmpty())
        return;
    const auto call = [](GDBusConnection *, const char *, const char *, const char *, const char *, GVariant *,
                          gpointer listener) { (*static_cast<Listener *>(listener))(); };
    m_subscription = g_dbus_connection_signal_subscribe(m_connection, m_name.constData(),
        "org.freedesktop.DBus.Properties", "PropertiesChanged", m_path.constData(), kAddressBookBusName,
        G_DBUS_SIGNAL_FLAGS_NONE, call, new Listener(m_changed), forgetListener);
    m_watch = g_bus_watch_name_on_connection(m_connection, m_name.constData(), G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
        daemonEnded, new Listener(m_changed), forgetListener);
}

void BookObject::unsubscribe()
{
    if (m_subscription != 0)
        g_dbus_connection_signal_unsubscribe(m_connection, std::exchange(m_subscription, 0U));
    if (m_watch != 0)
        g_bus_unwatch_name(std::exchange(m_watch, 0U));
}

GVariant *BookObject::property(const char *name, GError **error) const
{
    if (m_path.isEmpty())
        return nullptr;
    GVariant *answer = g_dbus_connection_call_sync(m_connection, m_name.constData(), m_path.constData(),
        "org.freedesktop.DBus.Properties", "Get", g_variant_new("(ss)", kAddressBookBusName, name),
        G_VARIANT_TYPE("(v)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, m_guard->beginCall(), error);
    if (!answer)
        return nullptr;
    GVariant *value = nullptr;
    g_variant_get(answer, "(v)", &value);
    g_variant_unref(answer);
    return value;
}

QByteArray BookObject::revision(GError **error) const
{
    GVariant *value = property("Revision", error);
    if (!value)
        return {};
    QByteArray text(g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) ? g_variant_get_string(value, nullptr) : "");
    g_variant_unref(value);
    return text;
}

bool BookObject::isWritable() const
{
    GVariant *value = property("Writable", nullptr);
    const bool isTrue = value && g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) && g_variant_get_boolean(value);
    if (value)
        g_variant_unref(value);
    return isTrue;
}

std::vector<QByteArray> BookObject::texts(GError **error) const
{
    GVariant *answer = g_dbus_connection_call_sync(m_connection, m_name.constData(), m_path.constData(),
        kAddressBookBusName, "GetContactList", g_variant_new("(s)", ""), G_VARIANT_TYPE("(as)"),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, G_MAXINT, m_guard->beginCall(), error);
    std::vector<QByteArray> texts;
    if (!answer)
        return texts;
    GVariantIter *iterator = nullptr;
    g_variant_get(answer, "(as)", &iterator);
    texts.reserve(g_variant_iter_n_children(iterator));
    for (const char *text = nullptr; g_variant_iter_next(iterator, "&s", &text);)
        texts.emplace_back(text);
    g_variant_iter_free(iterator);
    g_variant_unref(answer);
    return texts;
}
