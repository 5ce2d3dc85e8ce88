// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

namespace velto::test
{

/// Answers the first bytes of every connection with bytes of the test's choice and closes it.
class RawServer final
{
public:
    explicit RawServer(QByteArray answer)
        : m_answer(std::move(answer))
    {
        QObject::connect(&m_listener, &QTcpServer::newConnection, &m_listener,
                         [this] { accept(); });
        if (!m_listener.listen(QHostAddress::LocalHost))
            qFatal("The raw server could not listen");
    }

    [[nodiscard]] QUrl url(const QString &scheme = QStringLiteral("http")) const
    {
        return QUrl(QStringLiteral("%1://127.0.0.1:%2/").arg(scheme).arg(m_listener.serverPort()));
    }

private:
    void accept()
    {
        QTcpSocket *socket = m_listener.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
            socket->readAll();
            socket->write(m_answer);
            socket->disconnectFromHost();
        });
    }

    const QByteArray m_answer;
    QTcpServer m_listener;
};

} // namespace velto::test
