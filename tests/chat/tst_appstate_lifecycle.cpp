// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "appstatetest.h"

#include <QSignalSpy>

using namespace velto;
using namespace velto::chat;
using test::answer;
using test::AppStateTest;
using test::await;
using test::deltaFrame;
using test::Exchange;
using test::finishFrame;
using test::RecordedRequest;
using test::text;
using test::waitUntil;

namespace
{

QByteArray row(const QByteArray &id, const QByteArray &title)
{
    return R"({"id":")" + id + R"(","channel":"chat_ui","title":")" + title +
           R"(","messageCount":2,"createdAt":"2026-01-01T00:00:00Z"})";
}

QByteArray storedTurn(const QByteArray &words)
{
    return R"([{"id":"m","role":"user","parts":[{"type":"text","text":")" + words + R"("}]}])";
}

class AppStateLifecycle : public AppStateTest
{
protected:
    void cacheConversation(const char *words)
    {
        conversationcache::save({newMessage(ChatMessage::Role::User, {textPart(text(words))})},
                                text("cached"), cacheFile);
    }
    void listHistory(const QByteArray &rows)
    {
        server.on("/v1/conversations", answer(200, "[" + rows + "]"));
        await(state->refreshConversations());
    }
    [[nodiscard]] QStringList titles() const
    {
        QStringList titles;
        for (const auto &conversation : state->conversations().value())
            titles += conversation.title.value_or(QString());
        return titles;
    }
    [[nodiscard]] AuthStatus::Kind status() const { return state->authStatusKind(); }
    /// Lets the browser come back with `query` once it was opened.
    void redirectWith(const std::function<QUrlQuery(const QUrlQuery &)> &query)
    {
        ASSERT_TRUE(waitUntil([&] { return !opened->isEmpty(); }));
        const QUrlQuery asked(opened->first());
        QUrl target(asked.queryItemValue(text("redirect_uri"), QUrl::FullyDecoded));
        target.setQuery(query(asked));
        QTcpSocket browserSocket;
        browserSocket.connectToHost(target.host(), static_cast<quint16>(target.port()));
        ASSERT_TRUE(browserSocket.waitForConnected());
        browserSocket.write("GET " + target.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority) +
                            " HTTP/1.1\r\n\r\n");
        ASSERT_TRUE(
            waitUntil([&] { return browserSocket.state() == QTcpSocket::UnconnectedState; }));
    }
};

} // namespace

TEST_F(AppStateLifecycle, aStartWithoutATokenAsksForSignIn)
{
    cacheConversation("hi");
    await(state->bootstrap());
    EXPECT_EQ(status(), AuthStatus::Kind::LoggedOut);
    EXPECT_TRUE(server.requests().isEmpty());
    EXPECT_TRUE(QFile::exists(cacheFile));
}

TEST_F(AppStateLifecycle, aStartShowsTheCachedMessagesBeforeTheServiceAnswers)
{
    cacheConversation("from the cache");
    storeToken(text("stored"));
    std::optional<Exchange> pending;
    server.on("/auth/oauth2/token",
              [&](const RecordedRequest &, const Exchange &exchange) { pending = exchange; });
    QList<AuthStatus::Kind> statuses{status()};
    QObject::connect(state.get(), &AppState::authStatusChanged, state.get(),
                     [&] { statuses += status(); });
    state->startBootstrap();
    EXPECT_EQ(texts(), QStringList{text("from the cache")});
    EXPECT_EQ(state->conversationID(), text("cached"));
    ASSERT_TRUE(waitUntil([&] { return pending.has_value(); }));
    EXPECT_EQ(status(), AuthStatus::Kind::Bootstrapping);
    pending->respond(200, R"({"access_token":"access","token_type":"Bearer","expires_in":900,)"
                          R"("refresh_token":"rotated"})");
    ASSERT_TRUE(waitUntil([&] { return state->conversations().has_value(); }));
    EXPECT_EQ(statuses, (QList{AuthStatus::Kind::Bootstrapping, AuthStatus::Kind::LoggedIn}));
    EXPECT_EQ(texts(), QStringList{text("from the cache")});
    EXPECT_EQ(state->authStatus().me()->user.name, text("Ada"));
    EXPECT_EQ(storedToken(), text("rotated"));
    EXPECT_EQ(state->api().accessToken(), text("access"));
}

TEST_F(AppStateLifecycle, aStartRunsOnce)
{
    storeToken(text("stored"));
    state->startBootstrap();
    await(state->bootstrap());
    ASSERT_TRUE(waitUntil([&] { return state->conversations().has_value(); }));
    EXPECT_EQ(server.count("/v1/me"), 1);
}

TEST_F(AppStateLifecycle, aRejectedTokenEndsTheSessionAndItsCache)
{
    cacheConversation("hi");
    storeToken(text("stored"));
    server.on("/auth/oauth2/token", answer(400, R"({"error":"invalid_grant"})"));
    await(state->bootstrap());
    EXPECT_EQ(status(), AuthStatus::Kind::LoggedOut);
    EXPECT_FALSE(storedToken().has_value());
    EXPECT_TRUE(state->messages().isEmpty());
    EXPECT_FALSE(state->conversationID().has_value());
    EXPECT_FALSE(QFile::exists(cacheFile));
    EXPECT_EQ(server.count("/auth/oauth2/revoke"), 0);
}

TEST_F(AppStateLifecycle, aStartOfflineSignsOutAndRevokes)
{
    cacheConversation("hi");
    storeToken(text("stored"));
    server.on("/auth/oauth2/token",
              [](const RecordedRequest &, const Exchange &exchange) { exchange.reset(); });
    await(state->bootstrap());
    EXPECT_EQ(status(), AuthStatus::Kind::LoggedOut);
    EXPECT_FALSE(storedToken().has_value());
    EXPECT_FALSE(QFile::exists(cacheFile));
    EXPECT_EQ(server.count("/auth/oauth2/revoke"), 1);
}

TEST_F(AppStateLifecycle, aStartWhoseAccountCannotBeReadSignsOut)
{
    storeToken(text("stored"));
    server.on("/v1/me", answer(500, "x"));
    await(state->bootstrap());
    EXPECT_EQ(status(), AuthStatus::Kind::LoggedOut);
    EXPECT_FALSE(storedToken().has_value());
}

TEST_F(AppStateLifecycle, quittingDuringTheStartKeepsTheSession)
{
    cacheConversation("hi");
    storeToken(text("stored"));
    std::optional<Exchange> pending;
    server.on("/auth/oauth2/token",
              [&](const RecordedRequest &, const Exchange &exchange) { pending = exchange; });
    state->startBootstrap();
    ASSERT_TRUE(waitUntil([&] { return pending.has_value(); }));
    state.reset();
    EXPECT_TRUE(waitUntil([&] { return !pending->isOpen(); }));
    EXPECT_EQ(storedToken(), text("stored"));
    EXPECT_TRUE(QFile::exists(cacheFile));
}

TEST_F(AppStateLifecycle, signInGoesThroughTheBrowserToLoggedIn)
{
    await(state->bootstrap());
    state->startSignIn();
    EXPECT_EQ(status(), AuthStatus::Kind::Authenticating);
    redirectWith([](const QUrlQuery &asked) {
        QUrlQuery query;
        query.addQueryItem(text("code"), text("c"));
        query.addQueryItem(text("state"), asked.queryItemValue(text("state")));
        return query;
    });
    ASSERT_TRUE(waitUntil([&] { return status() == AuthStatus::Kind::LoggedIn; }));
    EXPECT_TRUE(waitUntil([&] { return state->conversations().has_value(); }));
    EXPECT_EQ(storedToken(), text("rotated"));
}

TEST_F(AppStateLifecycle, aFailedSignInShowsItsReason)
{
    state->startSignIn();
    redirectWith([](const QUrlQuery &) { return QUrlQuery(text("error=access_denied&state=x")); });
    ASSERT_TRUE(waitUntil([&] { return status() == AuthStatus::Kind::Error; }));
    EXPECT_EQ(state->authError(), text("Authorization server returned no code."));
    EXPECT_FALSE(storedToken().has_value());
}

TEST_F(AppStateLifecycle, aSignInWhoseAccountCannotBeReadKeepsTheToken)
{
    server.on("/v1/me", answer(500, "x"));
    state->startSignIn();
    redirectWith([](const QUrlQuery &asked) {
        return QUrlQuery(text("code=c&state=") + asked.queryItemValue(text("state")));
    });
    ASSERT_TRUE(waitUntil([&] { return status() == AuthStatus::Kind::Error; }));
    EXPECT_EQ(storedToken(), text("rotated"));
}

TEST_F(AppStateLifecycle, signOutLeavesNothingBehind)
{
    signedIn();
    server.on("/v1/chat", answer(500, "x"));
    send("hi");
    cacheConversation("hi");
    state->setSelectedSection(AppState::Section::Profile);
    state->setInputDraft(text("draft"));
    await(state->signOut());
    EXPECT_EQ(status(), AuthStatus::Kind::LoggedOut);
    EXPECT_FALSE(storedToken().has_value());
    EXPECT_EQ(server.count("/auth/oauth2/revoke"), 1);
    EXPECT_FALSE(state->api().accessToken().has_value());
    EXPECT_TRUE(state->messages().isEmpty());
    EXPECT_FALSE(state->conversationID().has_value());
    EXPECT_FALSE(state->lastError().has_value());
    EXPECT_FALSE(QFile::exists(cacheFile));
    EXPECT_EQ(state->selectedSection(), AppState::Section::Chat);
    EXPECT_FALSE(state->didBootstrap());
    EXPECT_EQ(state->inputDraft(), text("draft"));
}

TEST_F(AppStateLifecycle, signOutDoesNotNeedTheService)
{
    signedIn();
    server.on("/auth/oauth2/revoke",
              [](const RecordedRequest &, const Exchange &exchange) { exchange.reset(); });
    await(state->signOut());
    EXPECT_FALSE(storedToken().has_value());
    EXPECT_EQ(status(), AuthStatus::Kind::LoggedOut);
}

TEST_F(AppStateLifecycle, aFailedFirstListingGivesAnEmptyHistory)
{
    server.on("/v1/conversations", answer(500, "x"));
    await(state->refreshConversations());
    ASSERT_TRUE(state->conversations().has_value());
    EXPECT_TRUE(state->conversations()->isEmpty());
    EXPECT_FALSE(state->lastError().has_value());
}

TEST_F(AppStateLifecycle, aFailedLaterListingKeepsTheHistory)
{
    listHistory(row("1", "One"));
    server.on("/v1/conversations", answer(500, "x"));
    await(state->refreshConversations());
    EXPECT_EQ(titles(), QStringList{text("One")});
}

TEST_F(AppStateLifecycle, selectingOpensAndCachesAConversation)
{
    server.on("/v1/conversations/c2/messages", answer(200, storedTurn("stored")));
    QSignalSpy loading(state.get(), &AppState::isLoadingConversationChanged);
    await(state->selectConversation(text("c2")));
    EXPECT_EQ(loading.count(), 2);
    EXPECT_FALSE(state->isLoadingConversation());
    EXPECT_EQ(texts(), QStringList{text("stored")});
    EXPECT_EQ(state->conversationID(), text("c2"));
    EXPECT_EQ(conversationcache::load(cacheFile)->conversationID, text("c2"));
}

TEST_F(AppStateLifecycle, selectingTheOpenConversationFetchesOnlyWhenItIsEmpty)
{
    server.on("/v1/conversations/c2/messages", answer(200, "[]"));
    await(state->selectConversation(text("c2")));
    await(state->selectConversation(text("c2")));
    EXPECT_EQ(server.count("/v1/conversations/c2/messages"), 2);
    server.on("/v1/conversations/c2/messages", answer(200, storedTurn("x")));
    await(state->selectConversation(text("c2")));
    await(state->selectConversation(text("c2")));
    EXPECT_EQ(server.count("/v1/conversations/c2/messages"), 3);
}

TEST_F(AppStateLifecycle, aConversationThatCannotBeFetchedShowsEmpty)
{
    for (const int failing : {204, 404, 500}) {
        server.on("/v1/conversations/ok/messages", answer(200, storedTurn("x")));
        await(state->selectConversation(text("ok")));
        const QByteArray cached = cacheBytes();
        server.on("/v1/conversations/bad/messages", answer(failing, {}));
        await(state->selectConversation(text("bad")));
        EXPECT_TRUE(state->messages().isEmpty());
        EXPECT_EQ(state->conversationID(), text("bad"));
        EXPECT_FALSE(state->lastError().has_value());
        EXPECT_FALSE(state->isLoadingConversation());
        EXPECT_EQ(cacheBytes(), cached);
    }
}

TEST_F(AppStateLifecycle, selectingDuringARunDoesNothing)
{
    server.on("/v1/chat",
              [](const RecordedRequest &, const Exchange &exchange) { exchange.beginStream(); });
    state->setInputDraft(text("hi"));
    state->startSendDraft();
    await(state->selectConversation(text("c2")));
    EXPECT_EQ(state->messages().size(), 2);
    EXPECT_EQ(server.count("/v1/conversations/c2/messages"), 0);
}

TEST_F(AppStateLifecycle, theLaterAnswerOfTwoSelectionsWins)
{
    std::optional<Exchange> slow;
    server.on("/v1/conversations/slow/messages",
              [&](const RecordedRequest &, const Exchange &exchange) { slow = exchange; });
    server.on("/v1/conversations/fast/messages", answer(200, storedTurn("fast")));
    state->startSelectConversation(text("slow"));
    ASSERT_TRUE(waitUntil([&] { return slow.has_value(); }));
    await(state->selectConversation(text("fast")));
    EXPECT_EQ(texts(), QStringList{text("fast")});
    EXPECT_FALSE(state->isLoadingConversation());
    slow->respond(200, storedTurn("slow"));
    ASSERT_TRUE(waitUntil([&] { return state->conversationID() == text("slow"); }));
    EXPECT_EQ(texts(), QStringList{text("slow")});
}

TEST_F(AppStateLifecycle, anIdWithASlashIsSentAsItIs)
{
    server.on("/v1/conversations/a/b%20c/messages", answer(200, storedTurn("x")));
    await(state->selectConversation(text("a/b c")));
    EXPECT_EQ(texts(), QStringList{text("x")});
}

TEST_F(AppStateLifecycle, stepsThroughTheHistory)
{
    for (const QByteArray id : {"1", "2"})
        server.on("/v1/conversations/" + id + "/messages", answer(200, storedTurn(id)));
    await(state->stepConversation(1));
    EXPECT_FALSE(state->conversationID().has_value());
    listHistory(row("1", "One") + "," + row("2", "Two"));
    await(state->stepConversation(-1));
    EXPECT_FALSE(state->conversationID().has_value());
    await(state->stepConversation(1));
    EXPECT_EQ(state->conversationID(), text("1"));
    await(state->stepConversation(1));
    EXPECT_EQ(state->conversationID(), text("2"));
    await(state->stepConversation(1));
    EXPECT_EQ(state->conversationID(), text("2"));
    await(state->stepConversation(-1));
    EXPECT_EQ(state->conversationID(), text("1"));
    await(state->stepConversation(-1));
    EXPECT_EQ(state->conversationID(), text("1"));
}

TEST_F(AppStateLifecycle, renamingShowsAtOnceAndIsSentTrimmed)
{
    listHistory(row("1", "One"));
    server.on("/v1/conversations/1", answer(200));
    const QCoro::Task<void> renaming = state->renameConversation(text("1"), text("  New\n"));
    EXPECT_EQ(titles(), QStringList{text("New")});
    ASSERT_TRUE(waitUntil([&] { return server.count("/v1/conversations/1") == 1; }));
    EXPECT_EQ(server.requests().last().method, "PATCH");
    EXPECT_EQ(server.requests().last().body, R"({"title":"New"})");
}

TEST_F(AppStateLifecycle, aBlankTitleIsNotSent)
{
    listHistory(row("1", "One"));
    await(state->renameConversation(text("1"), text(" \n")));
    EXPECT_EQ(titles(), QStringList{text("One")});
    EXPECT_EQ(server.count("/v1/conversations/1"), 0);
}

TEST_F(AppStateLifecycle, aRefusedRenameRestoresTheRow)
{
    listHistory(row("1", "One"));
    server.on("/v1/conversations/1", answer(500));
    await(state->renameConversation(text("1"), text("New")));
    EXPECT_EQ(titles(), QStringList{text("One")});
    EXPECT_FALSE(state->lastError().has_value());
}

TEST_F(AppStateLifecycle, deletingTheOpenConversationEmptiesTheChatEvenIfRefused)
{
    listHistory(row("1", "One") + "," + row("2", "Two"));
    server.on("/v1/conversations/1/messages", answer(200, storedTurn("x")));
    server.on("/v1/conversations/1", answer(500));
    await(state->selectConversation(text("1")));
    const QCoro::Task<void> deleting = state->deleteConversation(text("1"));
    EXPECT_EQ(titles(), QStringList{text("Two")});
    EXPECT_TRUE(state->messages().isEmpty());
    ASSERT_TRUE(waitUntil([&] { return titles().size() == 2; }));
    EXPECT_TRUE(state->messages().isEmpty());
    EXPECT_FALSE(state->conversationID().has_value());
    EXPECT_FALSE(QFile::exists(cacheFile));
}

TEST_F(AppStateLifecycle, deletingAnotherConversationLeavesTheChat)
{
    listHistory(row("1", "One") + "," + row("2", "Two"));
    server.on("/v1/conversations/1/messages", answer(200, storedTurn("x")));
    server.on("/v1/conversations/2", answer(204));
    await(state->selectConversation(text("1")));
    await(state->deleteConversation(text("2")));
    EXPECT_EQ(titles(), QStringList{text("One")});
    EXPECT_EQ(texts(), QStringList{text("x")});
}

TEST_F(AppStateLifecycle, switchingTheWorkspaceAppliesTheNewAccount)
{
    signedIn();
    streams(deltaFrame("a") + finishFrame);
    send("hi");
    server.on("/v1/workspaces/switch", answer(200));
    server.on("/v1/me", answer(200, R"({"userId":"u","workspaceId":"w2","workspaces":[)"
                                    R"({"id":"w2","slug":"s","name":"W","role":"owner"}],)"
                                    R"("user":{}})"));
    state->setInputDraft(text("draft"));
    EXPECT_FALSE(await(state->switchWorkspace(text("w2"))).has_value());
    EXPECT_EQ(state->inputDraft(), text("draft"));
    EXPECT_EQ(lastBody("/v1/workspaces/switch"), (QJsonObject{{text("workspace_id"), text("w2")}}));
    EXPECT_EQ(state->currentWorkspace()->id, text("w2"));
    EXPECT_TRUE(state->canManageWorkspace());
    EXPECT_TRUE(state->messages().isEmpty());
}

TEST_F(AppStateLifecycle, aRefusedSwitchChangesNothingAndSaysWhy)
{
    signedIn();
    streams(deltaFrame("a") + finishFrame);
    send("hi");
    server.on("/v1/workspaces/switch", answer(403, "not yours"));
    EXPECT_EQ(await(state->switchWorkspace(text("w2"))),
              text("Request failed (HTTP 403): not yours"));
    EXPECT_EQ(state->currentWorkspace()->id, text("w"));
    EXPECT_EQ(state->messages().size(), 2);
}

TEST_F(AppStateLifecycle, anExplicitFalseOfTheServiceBeatsTheRole)
{
    service::Me me{text("u"), {}, text("w"), {{text("w"), text("s"), text("W"), text("owner")}},
                   {},        {}, {}};
    state->applyMe(me);
    EXPECT_TRUE(state->canManageWorkspace());
    me.isAdmin = false;
    state->applyMe(me);
    EXPECT_FALSE(state->canManageWorkspace());
    me.isAdmin = true;
    me.workspaces[0].role = text("member");
    state->applyMe(me);
    EXPECT_TRUE(state->canManageWorkspace());
    me.isAdmin.reset();
    state->applyMe(me);
    EXPECT_FALSE(state->canManageWorkspace());
}

TEST_F(AppStateLifecycle, aDeepLinkOpensANewChat)
{
    streams(deltaFrame("a") + finishFrame);
    send("hi");
    const int focus = state->focusInputRequest();
    await(state->handleDeepLink(QUrl(text("ltd.orbax.velto://new?text=Hello%20you&text=no"))));
    EXPECT_TRUE(state->messages().isEmpty());
    EXPECT_EQ(state->inputDraft(), text("Hello you"));
    EXPECT_EQ(state->focusInputRequest(), focus + 1);
}

TEST_F(AppStateLifecycle, aDeepLinkWithAnEmptyTextKeepsTheDraft)
{
    state->setInputDraft(text("draft"));
    const int focus = state->focusInputRequest();
    await(state->handleDeepLink(QUrl(text("ltd.orbax.velto://new?text="))));
    EXPECT_EQ(state->inputDraft(), text("draft"));
    EXPECT_EQ(state->focusInputRequest(), focus + 1);
}

TEST_F(AppStateLifecycle, aDeepLinkOpensAConversation)
{
    server.on("/v1/conversations/c2/messages", answer(200, storedTurn("x")));
    await(state->handleDeepLink(QUrl(text("ltd.orbax.velto://chat/c2"))));
    EXPECT_EQ(state->conversationID(), text("c2"));
}

TEST_F(AppStateLifecycle, otherDeepLinksAreDropped)
{
    for (const char *link : {"ltd.orbax.velto://chat", "ltd.orbax.velto://chat/chat",
                             "ltd.orbax.velto://other/c2", "ltd.orbax.velto:new", "", "::"})
        await(state->handleDeepLink(QUrl(text(link))));
    EXPECT_TRUE(server.requests().isEmpty());
    EXPECT_EQ(state->focusInputRequest(), 0);
}
