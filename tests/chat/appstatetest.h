// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/appstate.h"
#include "chat/conversationcache.h"

#include "support/coroutinetest.h"
#include "support/memorysecretstore.h"
#include "support/scriptedserver.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QUrlQuery>

#include <gtest/gtest.h>

namespace velto::test
{

[[nodiscard]] inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// Stands in for the browser: remembers the address and, when told to, follows the redirect that a
/// service would answer with.
class BrowserDouble final : public platform::URLLauncher
{
public:
    explicit BrowserDouble(std::shared_ptr<QList<QUrl>> opened)
        : m_opened(std::move(opened))
    {}

    QCoro::Task<bool> launch(QUrl url) override
    {
        m_opened->append(url);
        co_return true;
    }

private:
    std::shared_ptr<QList<QUrl>> m_opened;
};

/// The real AppState against a scripted service, with secrets in memory and its cache in a folder
/// of the test's own.
class AppStateTest : public testing::Test
{
protected:
    AppStateTest()
    {
        server.on("/auth/oauth2/token",
                  answer(200, R"({"access_token":"access","token_type":"Bearer","expires_in":900,)"
                              R"("refresh_token":"rotated"})"));
        server.on("/auth/oauth2/revoke", answer(200));
        server.on("/v1/me", answer(200, R"({"userId":"u","workspaceId":"w","workspaces":[)"
                                        R"({"id":"w","slug":"s","name":"W","role":"member"}],)"
                                        R"("user":{"name":"Ada"}})"));
        server.on("/v1/conversations", answer(200, "[]"));
        server.on("/v1/me/profile",
                  answer(200, R"({"memberships":[],"integrations":{"googleConnected":false}})"));
        server.on("/v1/admin/overview", answer(403, "no"));
        makeState();
    }

    void makeState()
    {
        state.reset();
        state = std::make_unique<chat::AppState>(
            chat::AppState::Environment{secrets, browser, server.url(), cacheFile});
    }

    /// Brings the session to `LoggedIn` with a stored token, as a start of the program does.
    void signedIn()
    {
        storeToken(text("stored"));
        await(state->bootstrap());
        ASSERT_EQ(state->authStatusKind(), chat::AuthStatus::Kind::LoggedIn);
    }

    void storeToken(const QString &token)
    {
        ASSERT_TRUE(
            secrets.save(text("ltd.orbax.velto"), text("refresh_token"), token).has_value());
    }
    [[nodiscard]] std::optional<QString> storedToken()
    {
        return secrets.load(text("ltd.orbax.velto"), text("refresh_token")).value();
    }

    void streams(const QByteArray &frames, const HeaderList &headers = {})
    {
        server.on("/v1/chat", [=](const RecordedRequest &, const Exchange &exchange) {
            exchange.beginStream(200, headers);
            exchange.send(frames);
            exchange.close();
        });
    }
    void send(const char *words)
    {
        state->setInputDraft(text(words));
        await(state->sendDraft());
    }
    [[nodiscard]] QStringList texts() const
    {
        QStringList texts;
        for (const chat::ChatMessage &message : state->messages())
            texts.append(message.plainText());
        return texts;
    }
    [[nodiscard]] QJsonObject lastBody(const QByteArray &path) const
    {
        for (auto it = server.requests().crbegin(); it != server.requests().crend(); ++it) {
            if (it->target.split('?').first() == path)
                return QJsonDocument::fromJson(it->body).object();
        }
        return {};
    }
    [[nodiscard]] QByteArray cacheBytes() const
    {
        QFile file(cacheFile);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir home;
    QString cacheFile = home.filePath(QStringLiteral("velto/last-conversation.json"));
    ScriptedServer server;
    MemorySecretStore secrets;
    std::shared_ptr<QList<QUrl>> opened = std::make_shared<QList<QUrl>>();
    platform::URLOpener browser{std::make_unique<BrowserDouble>(opened)};
    std::unique_ptr<chat::AppState> state;
};

inline const QByteArray finishFrame = "data: {\"type\":\"finish\"}\n\n";

[[nodiscard]] inline QByteArray deltaFrame(const QByteArray &words)
{
    return "data: {\"type\":\"text-delta\",\"delta\":\"" + words + "\"}\n\n";
}

} // namespace velto::test
