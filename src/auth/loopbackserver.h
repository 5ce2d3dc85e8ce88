// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"
#include "base/oneshot.h"

#include <QCoroTask>

#include <QList>
#include <QObject>
#include <QTcpServer>
#include <QUrl>

#include <chrono>

class QTcpSocket;

namespace velto::auth
{

/// The one-shot HTTP listener to which the browser is redirected at the end of a sign-in. It lives
/// for one sign-in, and no other machine can reach it.
///
/// Everything happens on the thread that made it, between turns of its event loop, so there is
/// nothing for a lock to guard.
class LoopbackServer final : public QObject
{
    Q_OBJECT

public:
    explicit LoopbackServer(QObject *parent = nullptr);
    /// Stops.
    ~LoopbackServer() override;

    /// Opens a port of the system's choice on 127.0.0.1 and gives it; fails with `NoPort`.
    [[nodiscard]] base::Result<quint16> start();

    /// The redirected URL with its query. Fails with `TimedOut` after `timeout` or when the server
    /// is stopped, whichever comes first. Called once.
    [[nodiscard]] QCoro::Task<base::Result<QUrl>>
    waitForCallback(std::chrono::milliseconds timeout);

    /// Ends the wait with `result`. Does nothing while nobody waits and when the wait is over.
    void resolve(base::Result<QUrl> result);

    /// Closes the port and every connection that is still silent, and ends the wait.
    void stop();

private:
    void accept();
    void answer(QTcpSocket *connection);

    QTcpServer m_listener;
    QList<QTcpSocket *> m_silent; ///< Connections that have sent nothing yet, oldest first.
    base::OneShot<base::Result<QUrl>> m_callback;
    bool m_waiting = false;
};

} // namespace velto::auth
