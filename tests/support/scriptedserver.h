// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <functional>
#include <optional>

namespace velto::test
{

using HeaderList = QList<QPair<QByteArray, QByteArray>>;

/// A request as it came over the wire.
struct RecordedRequest
{
    QByteArray method;
    QByteArray target; ///< Path and query as sent.
    HeaderList headers;
    QByteArray body;
    int connection = 0; ///< 0 for the first connection that the server accepted.

    /// The first header of that name, whatever its case.
    [[nodiscard]] std::optional<QByteArray> header(const QByteArray &name) const;
};

/// The server's side of one request. Stays usable after the handler has returned, so an answer can
/// be given in pieces, later or never. Everything is written at once and flushed.
class Exchange final
{
public:
    explicit Exchange(QTcpSocket *socket)
        : m_socket(socket)
    {}

    void respond(int status, const QByteArray &body = {}, const HeaderList &headers = {}) const;
    /// Status line and headers of a body that ends when the connection closes.
    void beginStream(int status = 200, const HeaderList &headers = {}) const;
    void send(const QByteArray &bytes) const;
    /// Ends the connection in order.
    void close() const;
    /// Ends the connection with a reset.
    void reset() const;
    [[nodiscard]] bool isOpen() const;

private:
    QPointer<QTcpSocket> m_socket;
};

/// A real HTTP/1.1 server on 127.0.0.1 whose answers a test scripts. It runs in the test's event
/// loop, keeps connections alive and records every request.
class ScriptedServer final : public QObject
{
    Q_OBJECT

public:
    using Handler = std::function<void(const RecordedRequest &, Exchange)>;

    ScriptedServer();
    ~ScriptedServer() override;

    [[nodiscard]] quint16 port() const { return m_listener.serverPort(); }
    /// "http://127.0.0.1:<port>" and `path`; `host` may be another name for this machine.
    [[nodiscard]] QUrl url(const QString &path = QStringLiteral("/"),
                           const QString &host = QStringLiteral("127.0.0.1")) const;

    /// Answers requests whose path (without query) is `path`, with whatever method; the newest
    /// handler for a path counts. An unscripted path is answered with 404.
    void on(const QByteArray &path, Handler handler);
    /// The next answers of `path`, one a request, the last one for ever.
    void script(const QByteArray &path, QList<Handler> answers);

    [[nodiscard]] const QList<RecordedRequest> &requests() const { return m_requests; }
    [[nodiscard]] qsizetype count(const QByteArray &path) const;
    [[nodiscard]] int connectionCount() const { return m_connections; }
    [[nodiscard]] qsizetype openConnectionCount() const { return m_unread.size(); }
    /// Closes every kept connection, as a server that ends idle ones does.
    void dropConnections();

signals:
    void requestReceived();

private:
    void accept();
    void readFrom(QTcpSocket *socket, int connection);
    void dispatch(QTcpSocket *socket, const RecordedRequest &request);

    QTcpServer m_listener;
    QHash<QByteArray, Handler> m_handlers;
    QHash<QTcpSocket *, QByteArray> m_unread;
    QList<RecordedRequest> m_requests;
    int m_connections = 0;
};

/// Handlers for the common answers.
[[nodiscard]] ScriptedServer::Handler answer(int status, const QByteArray &body = {},
                                             const HeaderList &headers = {});

} // namespace velto::test
