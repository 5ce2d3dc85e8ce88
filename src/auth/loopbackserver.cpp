// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/loopbackserver.h"

#include "auth/loopbackwire.h"

#include <QTcpSocket>
#include <QTimer>

namespace velto::auth
{
namespace
{

using base::LoopbackError;

/// Browsers open a few connections ahead of need. More than this is somebody else, whose
/// connections must not use up the descriptors that the redirect needs.
constexpr qsizetype maximumSilentConnections = 32;

} // namespace

LoopbackServer::LoopbackServer(QObject *parent)
    : QObject(parent)
{
    connect(&m_listener, &QTcpServer::newConnection, this, &LoopbackServer::accept);
}

LoopbackServer::~LoopbackServer()
{
    stop();
}

base::Result<quint16> LoopbackServer::start()
{
    if (!m_listener.listen(QHostAddress::LocalHost, 0) || m_listener.serverPort() == 0)
        return base::fail(LoopbackError{LoopbackError::Kind::NoPort});
    return m_listener.serverPort();
}

QCoro::Task<base::Result<QUrl>> LoopbackServer::waitForCallback(std::chrono::milliseconds timeout)
{
    const auto callback = m_callback;
    m_waiting = true;
    if (!m_listener.isListening())
        stop();
    QTimer::singleShot(timeout, this, [this] {
        resolve(base::fail(LoopbackError{LoopbackError::Kind::TimedOut}));
    });
    co_return co_await callback;
}

void LoopbackServer::resolve(base::Result<QUrl> result)
{
    if (m_waiting)
        m_callback.resolve(std::move(result));
}

void LoopbackServer::stop()
{
    m_listener.close();
    for (QTcpSocket *connection : std::exchange(m_silent, {})) {
        connection->disconnect(this);
        connection->abort();
        connection->deleteLater();
    }
    resolve(base::fail(LoopbackError{LoopbackError::Kind::TimedOut}));
}

void LoopbackServer::accept()
{
    while (QTcpSocket *connection = m_listener.nextPendingConnection()) {
        connection->setReadBufferSize(maximumRequestChunk);
        connect(connection, &QTcpSocket::readyRead, this,
                [this, connection] { answer(connection); });
        connect(connection, &QTcpSocket::disconnected, this, [this, connection] {
            m_silent.removeOne(connection);
            connection->deleteLater();
        });
        m_silent.append(connection);
        if (m_silent.size() > maximumSilentConnections)
            m_silent.first()->abort();
    }
}

void LoopbackServer::answer(QTcpSocket *connection)
{
    if (!m_silent.removeOne(connection))
        return;
    const QString target = callbackTarget(connection->read(maximumRequestChunk));
    const bool redirected = isCallback(target);
    connection->write(redirected ? callbackAnswer() : notFoundAnswer());
    // The answer fits into the system's buffer, so it is out of our hands before the wait ends and
    // whoever waited stops this server.
    connection->flush();
    connection->disconnectFromHost();
    if (!redirected)
        return;
    const QUrl url(QStringLiteral("http://127.0.0.1:%1").arg(m_listener.serverPort()) + target);
    if (url.isValid())
        resolve(url);
    else
        resolve(base::fail(LoopbackError{LoopbackError::Kind::NoPort}));
}

} // namespace velto::auth
