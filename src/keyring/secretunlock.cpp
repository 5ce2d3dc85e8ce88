// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "keyring/secretunlock.h"

#include <QByteArray>
#include <QtGlobal>

#include <gio/gio.h>

namespace velto::keyring
{
namespace
{

constexpr char serviceName[] = "org.freedesktop.secrets";
constexpr char servicePath[] = "/org/freedesktop/secrets";
constexpr char promptInterface[] = "org.freedesktop.Secret.Prompt";
constexpr int defaultTimeout = -1;

/// The path of the prompt that the service wants to show first, or empty.
QByteArray requestUnlock(GDBusConnection *bus, const char *path, GCancellable *cancelled)
{
    const char *paths[] = {path, nullptr};
    GVariant *reply = g_dbus_connection_call_sync(
        bus, serviceName, servicePath, "org.freedesktop.Secret.Service", "Unlock",
        g_variant_new("(^ao)", paths), G_VARIANT_TYPE("(aoo)"), G_DBUS_CALL_FLAGS_NONE,
        defaultTimeout, cancelled, nullptr);
    if (!reply)
        return {};
    const char *prompt = nullptr;
    g_variant_get(reply, "(@ao&o)", nullptr, &prompt);
    QByteArray result(prompt);
    g_variant_unref(reply);
    return result == "/" ? QByteArray() : result;
}

/// One prompt of the service, from asking to the answer, in an event loop of its own.
class Prompt final
{
public:
    Prompt(GDBusConnection *bus, const QByteArray &path, GCancellable *cancelled)
        : m_bus(bus)
        , m_path(path)
        , m_cancelled(cancelled)
        , m_context(g_main_context_new())
    {
        g_main_context_push_thread_default(m_context);
    }
    ~Prompt()
    {
        g_main_context_pop_thread_default(m_context);
        g_main_context_unref(m_context);
    }
    Q_DISABLE_COPY_MOVE(Prompt)

    /// True when the user has given what was asked for.
    [[nodiscard]] bool run();

private:
    struct Outcome
    {
        bool isOver = false;
        bool isGranted = false;
    };
    static void onCompleted(GDBusConnection *, const char *, const char *, const char *,
                            const char *, GVariant *arguments, gpointer outcome);
    static void onVanished(GDBusConnection *, const char *, gpointer outcome)
    {
        static_cast<Outcome *>(outcome)->isOver = true;
    }
    /// Runs in the thread that cancels.
    static void onCancelled(GCancellable *, gpointer context)
    {
        g_main_context_wakeup(static_cast<GMainContext *>(context));
    }
    [[nodiscard]] bool open() const;
    void wait();

    GDBusConnection *m_bus;
    QByteArray m_path;
    GCancellable *m_cancelled;
    GMainContext *m_context;
    Outcome m_outcome;
};

bool Prompt::run()
{
    const guint signal = g_dbus_connection_signal_subscribe(
        m_bus, serviceName, promptInterface, "Completed", m_path.constData(), nullptr,
        G_DBUS_SIGNAL_FLAGS_NONE, onCompleted, &m_outcome, nullptr);
    const guint watch =
        g_bus_watch_name_on_connection(m_bus, serviceName, G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
                                       onVanished, &m_outcome, nullptr);
    if (open())
        wait();
    g_bus_unwatch_name(watch);
    g_dbus_connection_signal_unsubscribe(m_bus, signal);
    // What the two still had on their way must not find us gone.
    while (g_main_context_iteration(m_context, FALSE)) {
    }
    return m_outcome.isGranted;
}

void Prompt::onCompleted(GDBusConnection *, const char *, const char *, const char *, const char *,
                         GVariant *arguments, gpointer outcome)
{
    gboolean dismissed = TRUE;
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(bv)")))
        g_variant_get(arguments, "(bv)", &dismissed, nullptr);
    *static_cast<Outcome *>(outcome) = {.isOver = true, .isGranted = !dismissed};
}

void Prompt::wait()
{
    const gulong cancelling =
        g_cancellable_connect(m_cancelled, G_CALLBACK(onCancelled), m_context, nullptr);
    while (!m_outcome.isOver && !g_cancellable_is_cancelled(m_cancelled))
        g_main_context_iteration(m_context, TRUE);
    g_cancellable_disconnect(m_cancelled, cancelling);
    if (g_cancellable_is_cancelled(m_cancelled)) {
        g_dbus_connection_call(m_bus, serviceName, m_path.constData(), promptInterface, "Dismiss",
                               nullptr, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, defaultTimeout,
                               nullptr, nullptr, nullptr);
        // The program may end before the connection's own thread would have sent it.
        g_dbus_connection_flush_sync(m_bus, nullptr, nullptr);
    }
}

bool Prompt::open() const
{
    GVariant *reply = g_dbus_connection_call_sync(
        m_bus, serviceName, m_path.constData(), promptInterface, "Prompt", g_variant_new("(s)", ""),
        nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, defaultTimeout, m_cancelled, nullptr);
    if (reply)
        g_variant_unref(reply);
    return reply != nullptr;
}

} // namespace

bool unlockSecret(GDBusConnection *bus, const char *path, GCancellable *cancelled)
{
    const QByteArray prompt = requestUnlock(bus, path, cancelled);
    return prompt.isEmpty() || Prompt(bus, prompt, cancelled).run();
}

} // namespace velto::keyring
