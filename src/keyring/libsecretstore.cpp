// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "keyring/libsecretstore.h"

#include "base/text.h"
#include "keyring/secretunlock.h"

#include <libsecret/secret.h>

namespace velto::keyring
{
namespace
{

using base::KeychainError;
using base::Result;

template<auto Release>
struct Releaser
{
    void operator()(auto *object) const { Release(object); }
};

void unrefItems(GList *items)
{
    g_list_free_full(items, g_object_unref);
}

using Service = std::unique_ptr<SecretService, Releaser<g_object_unref>>;
using Attributes = std::unique_ptr<GHashTable, Releaser<g_hash_table_unref>>;
using Items = std::unique_ptr<GList, Releaser<unrefItems>>;
using Value = std::unique_ptr<SecretValue, Releaser<secret_value_unref>>;
using Cancellable = std::unique_ptr<GCancellable, Releaser<g_object_unref>>;

/// A share for one call, which may outlast the store that was called.
Cancellable share(GCancellable *cancellable)
{
    return Cancellable(G_CANCELLABLE(g_object_ref(cancellable)));
}

/// Where the library's events of one call go. Without it they would go to the main thread's event
/// loop, and what they hold on to would wait there.
class EventContext final
{
public:
    EventContext()
        : m_context(g_main_context_new())
    {
        g_main_context_push_thread_default(m_context);
    }
    ~EventContext()
    {
        while (g_main_context_iteration(m_context, FALSE)) {
        }
        g_main_context_pop_thread_default(m_context);
        g_main_context_unref(m_context);
    }
    Q_DISABLE_COPY_MOVE(EventContext)

private:
    GMainContext *m_context;
};

/// Receives the error of one library call.
class Error final
{
public:
    Error() = default;
    ~Error() { g_clear_error(&m_error); }
    Q_DISABLE_COPY_MOVE(Error)

    GError **out() { return &m_error; }
    [[nodiscard]] bool isSet() const { return m_error != nullptr; }
    [[nodiscard]] KeychainError asFailure() const;

private:
    [[nodiscard]] bool saysNobodyAnswers() const;

    GError *m_error = nullptr;
};

bool Error::saysNobodyAnswers() const
{
    if (m_error->domain != G_DBUS_ERROR)
        return false;
    switch (m_error->code) {
    case G_DBUS_ERROR_SERVICE_UNKNOWN:
    case G_DBUS_ERROR_NAME_HAS_NO_OWNER:
    case G_DBUS_ERROR_NO_REPLY:
    case G_DBUS_ERROR_NO_SERVER:
    case G_DBUS_ERROR_DISCONNECTED:
    case G_DBUS_ERROR_TIMEOUT:
        return true;
    default:
        return m_error->code >= G_DBUS_ERROR_SPAWN_EXEC_FAILED &&
               m_error->code <= G_DBUS_ERROR_SPAWN_NO_MEMORY;
    }
}

KeychainError Error::asFailure() const
{
    if (!isSet() || m_error->code == 0)
        return {KeychainError::Unknown};
    if (m_error->domain == SECRET_ERROR && m_error->code == SECRET_ERROR_IS_LOCKED)
        return {KeychainError::Locked};
    if (saysNobodyAnswers())
        return {KeychainError::NoService};
    return {m_error->code};
}

const SecretSchema *schema()
{
    static const SecretSchema *const schema = secret_schema_new(
        "ltd.orbax.velto", SECRET_SCHEMA_NONE, "service", SECRET_SCHEMA_ATTRIBUTE_STRING, "account",
        SECRET_SCHEMA_ATTRIBUTE_STRING, nullptr);
    return schema;
}

Attributes attributes(const QString &service, const QString &account)
{
    return Attributes(secret_attributes_build(schema(), "service", service.toUtf8().constData(),
                                              "account", account.toUtf8().constData(), nullptr));
}

/// A connection of our own to the service, not the library's shared one: that one would keep the
/// session of a keyring that has since gone.
Result<Service> open(GCancellable *abandoned)
{
    Error error;
    GDBusConnection *bus = g_bus_get_sync(G_BUS_TYPE_SESSION, abandoned, error.out());
    if (!bus)
        return base::fail(KeychainError{KeychainError::NoService});
    // A session bus that ends must not end the program with it.
    g_dbus_connection_set_exit_on_close(bus, FALSE);
    g_object_unref(bus);
    Service service(secret_service_open_sync(SECRET_TYPE_SERVICE, nullptr,
                                             SECRET_SERVICE_OPEN_SESSION, abandoned, error.out()));
    if (!service)
        return base::fail(error.asFailure());
    return service;
}

bool unlock(const Service &service, const char *path, GCancellable *abandoned)
{
    return unlockSecret(g_dbus_proxy_get_connection(G_DBUS_PROXY(service.get())), path, abandoned);
}

/// Every entry with these attributes, unlocked.
Result<Items> find(const Service &service, const Attributes &attributes, GCancellable *abandoned)
{
    Error error;
    Items items(secret_service_search_sync(service.get(), schema(), attributes.get(),
                                           SECRET_SEARCH_ALL, abandoned, error.out()));
    if (error.isSet())
        return base::fail(error.asFailure());
    for (const GList *item = items.get(); item; item = item->next) {
        const char *path = g_dbus_proxy_get_object_path(G_DBUS_PROXY(item->data));
        if (secret_item_get_locked(static_cast<SecretItem *>(item->data)) &&
            !unlock(service, path, abandoned))
            return base::fail(KeychainError{KeychainError::Locked});
    }
    return items;
}

Result<void> removeAll(const GList *items, GCancellable *abandoned)
{
    for (const GList *item = items; item; item = item->next) {
        Error error;
        if (!secret_item_delete_sync(static_cast<SecretItem *>(item->data), abandoned, error.out()))
            return base::fail(error.asFailure());
    }
    return {};
}

} // namespace

LibsecretStore::LibsecretStore()
    : m_abandoned(g_cancellable_new())
{}

LibsecretStore::~LibsecretStore()
{
    g_object_unref(m_abandoned);
}

void LibsecretStore::abandon()
{
    g_cancellable_cancel(m_abandoned);
}

Result<void> LibsecretStore::save(const QString &service, const QString &account,
                                  const QString &value)
{
    const EventContext context;
    const Cancellable abandoned = share(m_abandoned);
    const Result<Service> connection = open(abandoned.get());
    if (!connection)
        return tl::unexpected(connection.error());
    const Attributes key = attributes(service, account);
    const Result<Items> found = find(*connection, key, abandoned.get());
    if (!found)
        return tl::unexpected(found.error());

    const QByteArray bytes = value.toUtf8();
    const Value secret(secret_value_new(bytes.constData(), bytes.size(), "text/plain"));
    Error error;
    if (const GList *item = found->get()) {
        if (!secret_item_set_secret_sync(static_cast<SecretItem *>(item->data), secret.get(),
                                         abandoned.get(), error.out()))
            return base::fail(error.asFailure());
        // Entries of the same name in other collections would be found in place of this one.
        return removeAll(item->next, abandoned.get());
    }
    if (!unlock(*connection, "/org/freedesktop/secrets/aliases/default", abandoned.get()))
        return base::fail(KeychainError{KeychainError::Locked});
    if (!secret_service_store_sync(connection->get(), schema(), key.get(),
                                   SECRET_COLLECTION_DEFAULT, "velto sign-in", secret.get(),
                                   abandoned.get(), error.out()))
        return base::fail(error.asFailure());
    return {};
}

Result<std::optional<QString>> LibsecretStore::load(const QString &service, const QString &account)
{
    const EventContext context;
    const Cancellable abandoned = share(m_abandoned);
    const Result<Service> connection = open(abandoned.get());
    if (!connection)
        return tl::unexpected(connection.error());
    const Result<Items> found = find(*connection, attributes(service, account), abandoned.get());
    if (!found)
        return tl::unexpected(found.error());
    if (!*found)
        return std::optional<QString>();

    auto *item = static_cast<SecretItem *>((*found)->data);
    Error error;
    if (!secret_item_load_secret_sync(item, abandoned.get(), error.out()))
        return base::fail(error.asFailure());
    const Value secret(secret_item_get_secret(item));
    if (!secret)
        return base::fail(KeychainError{KeychainError::Unknown});
    gsize size = 0;
    const gchar *bytes = secret_value_get(secret.get(), &size);
    std::optional<QString> text = base::utf8Text({bytes, static_cast<qsizetype>(size)});
    if (!text)
        return base::fail(KeychainError{KeychainError::Unknown});
    return text;
}

Result<void> LibsecretStore::remove(const QString &service, const QString &account)
{
    const EventContext context;
    const Cancellable abandoned = share(m_abandoned);
    const Result<Service> connection = open(abandoned.get());
    if (!connection)
        return tl::unexpected(connection.error());
    const Result<Items> found = find(*connection, attributes(service, account), abandoned.get());
    if (!found)
        return tl::unexpected(found.error());
    return removeAll(found->get(), abandoned.get());
}

} // namespace velto::keyring
