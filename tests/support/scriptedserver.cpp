// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "support/scriptedserver.h"

#include <algorithm>
#include <memory>

#include <sys/socket.h>

namespace velto::test
{
namespace
{

QByteArray headerLines(int status, const HeaderList &headers)
{
    QByteArray lines = "HTTP/1.1 " + QByteArray::number(status) + " Scripted\r\n";
    for (const auto &[name, value] : headers)
        lines += name + ": " + value + "\r\n";
    return lines;
}

/// The request at the front of `buffer`, taken out of it, once it is complete.
std::optional<RecordedRequest> takeRequest(QByteArray &buffer)
{
    const qsizetype headEnd = buffer.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    RecordedRequest request;
    const QList<QByteArray> lines = buffer.left(headEnd).replace("\r\n", "\n").split('\n');
    const QList<QByteArray> words = lines.first().split(' ');
    request.method = words.value(0);
    request.target = words.value(1);
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const qsizetype colon = lines[i].indexOf(':');
        request.headers.append({lines[i].left(colon), lines[i].mid(colon + 1).trimmed()});
    }
    const qsizetype length = request.header("content-length").value_or("0").toLongLong();
    if (buffer.size() < headEnd + 4 + length)
        return std::nullopt;
    request.body = buffer.mid(headEnd + 4, length);
    buffer.remove(0, headEnd + 4 + length);
    return request;
}

} // namespace

std::optional<QByteArray> RecordedRequest::header(const QByteArray &name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return std::nullopt;
}

void Exchange::respond(int status, const QByteArray &body, const HeaderList &headers) const
{
    send(headerLines(status, headers) + "Content-Length: " + QByteArray::number(body.size()) +
         "\r\n\r\n" + body);
}

void Exchange::beginStream(int status, const HeaderList &headers) const
{
    send(headerLines(status, headers) + "Connection: close\r\n\r\n");
}

void Exchange::send(const QByteArray &bytes) const
{
    if (!m_socket)
        return;
    m_socket->write(bytes);
    m_socket->flush();
}

void Exchange::close() const
{
    if (m_socket)
        m_socket->disconnectFromHost();
}

void Exchange::reset() const
{
    if (!m_socket)
        return;
    m_socket->flush();
    // A socket that doesn't linger says goodbye with a reset.
    const linger none{1, 0};
    setsockopt(int(m_socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &none, sizeof(none));
    m_socket->abort();
}

bool Exchange::isOpen() const
{
    return m_socket && m_socket->state() == QAbstractSocket::ConnectedState;
}

ScriptedServer::ScriptedServer()
{
    connect(&m_listener, &QTcpServer::newConnection, this, &ScriptedServer::accept);
    if (!m_listener.listen(QHostAddress::LocalHost))
        qFatal("The scripted server could not listen");
}

ScriptedServer::~ScriptedServer()
{
    const QList<QTcpSocket *> sockets = m_unread.keys();
    for (QTcpSocket *socket : sockets) {
        socket->disconnect(this);
        socket->abort();
    }
}

QUrl ScriptedServer::url(const QString &path, const QString &host) const
{
    return QUrl(QStringLiteral("http://%1:%2%3").arg(host).arg(port()).arg(path));
}

void ScriptedServer::on(const QByteArray &path, Handler handler)
{
    m_handlers.insert(path, std::move(handler));
}

void ScriptedServer::script(const QByteArray &path, QList<Handler> answers)
{
    const auto next = std::make_shared<qsizetype>(0);
    on(path, [answers, next](const RecordedRequest &request, const Exchange &exchange) {
        const qsizetype index = std::min(*next, answers.size() - 1);
        ++*next;
        answers[index](request, exchange);
    });
}

qsizetype ScriptedServer::count(const QByteArray &path) const
{
    return std::ranges::count_if(m_requests, [&](const RecordedRequest &request) {
        return request.target.split('?').first() == path;
    });
}

void ScriptedServer::dropConnections()
{
    const QList<QTcpSocket *> sockets = m_unread.keys();
    for (QTcpSocket *socket : sockets)
        socket->disconnectFromHost();
}

void ScriptedServer::accept()
{
    while (QTcpSocket *socket = m_listener.nextPendingConnection()) {
        const int connection = m_connections++;
        m_unread.insert(socket, {});
        connect(socket, &QTcpSocket::readyRead, this,
                [this, socket, connection] { readFrom(socket, connection); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            m_unread.remove(socket);
            socket->deleteLater();
        });
    }
}

void ScriptedServer::readFrom(QTcpSocket *socket, int connection)
{
    QByteArray &buffer = m_unread[socket];
    buffer += socket->readAll();
    while (std::optional<RecordedRequest> request = takeRequest(buffer)) {
        request->connection = connection;
        m_requests.append(*request);
        dispatch(socket, *request);
        emit requestReceived();
        if (!m_unread.contains(socket))
            return;
    }
}

void ScriptedServer::dispatch(QTcpSocket *socket, const RecordedRequest &request)
{
    const Handler handler = m_handlers.value(request.target.split('?').first());
    if (handler)
        handler(request, Exchange(socket));
    else
        Exchange(socket).respond(404);
}

ScriptedServer::Handler answer(int status, const QByteArray &body, const HeaderList &headers)
{
    return [=](const RecordedRequest &, const Exchange &exchange) {
        exchange.respond(status, body, headers);
    };
}

} // namespace velto::test
