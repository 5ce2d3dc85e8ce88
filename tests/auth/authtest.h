// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "auth/authclient.h"
#include "support/coroutinetest.h"
#include "support/memorysecretstore.h"
#include "support/scriptedserver.h"

#include <QTcpSocket>
#include <QUrlQuery>

#include <gtest/gtest.h>

#include <functional>

namespace velto::auth
{

/// A browser: what it does with the page is the test's choice, and whether it opens at all.
class BrowserDouble final : public platform::URLLauncher
{
public:
    using Behaviour = std::function<bool(const QUrl &)>;
    explicit BrowserDouble(Behaviour &behaviour)
        : m_behaviour(behaviour)
    {}
    QCoro::Task<bool> launch(QUrl url) override { co_return m_behaviour(url); }

private:
    Behaviour &m_behaviour;
};

/// An AuthClient with a scripted authorization server, a scripted browser and a store in memory.
class AuthTest : public testing::Test
{
protected:
    const QByteArray tokenPath = "/prefix/auth/oauth2/token";
    const QByteArray revokePath = "/prefix/auth/oauth2/revoke";

    static QByteArray tokensNamed(const QByteArray &name)
    {
        return R"({"access_token":"access-secret-)" + name +
               R"(","token_type":"Bearer","expires_in":900,"refresh_token":"refresh-secret-)" +
               name + "\"}";
    }

    /// The fields of a form body, decoded by the rules of that content type.
    static QMap<QString, QString> form(const test::RecordedRequest &request)
    {
        EXPECT_EQ(request.method, "POST");
        EXPECT_EQ(request.header("content-type"), "application/x-www-form-urlencoded");
        EXPECT_FALSE(request.header("authorization").has_value());
        QMap<QString, QString> fields;
        for (const QByteArray &pair : request.body.split('&')) {
            const qsizetype equals = pair.indexOf('=');
            const auto decoded = [](QByteArray text) {
                return QString::fromUtf8(QByteArray::fromPercentEncoding(text.replace('+', ' ')));
            };
            fields.insert(decoded(pair.left(equals)), decoded(pair.mid(equals + 1)));
        }
        return fields;
    }

    /// What a browser is sent back with; gives all that it is answered.
    static std::shared_ptr<QByteArray> visit(quint16 port, const QByteArray &target)
    {
        const auto answer = std::make_shared<QByteArray>();
        auto *socket = new QTcpSocket;
        QObject::connect(socket, &QTcpSocket::readyRead, socket,
                         [=] { *answer += socket->readAll(); });
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::errorOccurred, socket, &QObject::deleteLater);
        socket->connectToHost(QHostAddress::LocalHost, port);
        socket->write("GET " + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n");
        return answer;
    }
    static QUrl redirectURI(const QUrl &page)
    {
        return QUrl(
            QUrlQuery(page).queryItemValue(QStringLiteral("redirect_uri"), QUrl::FullyDecoded));
    }
    static QByteArray state(const QUrl &page)
    {
        return QUrlQuery(page).queryItemValue(QStringLiteral("state")).toLatin1();
    }
    static std::shared_ptr<QByteArray> redirect(const QUrl &page, const QByteArray &query)
    {
        return visit(static_cast<quint16>(redirectURI(page).port()), "/callback" + query);
    }
    bool approve(const QUrl &page, const QByteArray &code = "the-code")
    {
        redirect(page, "?code=" + code + "&state=" + state(page));
        return true;
    }

    static bool canConnect(quint16 port)
    {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, port);
        EXPECT_TRUE(
            test::waitUntil([&] { return socket.state() != QAbstractSocket::ConnectingState; }));
        return socket.state() == QAbstractSocket::ConnectedState;
    }

    static base::Failure authError(base::AuthError::Kind kind, const QString &text = {})
    {
        return base::AuthError{kind, text};
    }

    /// All that `run` wrote to standard output.
    static std::string printed(const std::function<void()> &run)
    {
        testing::internal::CaptureStdout();
        run();
        return testing::internal::GetCapturedStdout();
    }

    test::ScriptedServer server;
    test::MemorySecretStore secrets;
    TokenStore tokens{secrets};
    service::Transport transport;
    BrowserDouble::Behaviour browser = [](const QUrl &) { return true; };
    platform::URLOpener opener{std::make_unique<BrowserDouble>(browser)};
    std::unique_ptr<AuthClient> client = std::make_unique<AuthClient>(
        transport, tokens, opener, server.url(QStringLiteral("/prefix")));
};

} // namespace velto::auth
