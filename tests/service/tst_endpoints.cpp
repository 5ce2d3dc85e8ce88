// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "apiclienttest.h"

namespace velto::service
{
namespace
{

using base::APIError;
using base::DecodingError;
using test::answer;
using test::await;

const QByteArray meDocument = R"({"userId":"u","workspaceId":"w","user":{"name":"Ada"},
    "workspaces":[{"id":"w","slug":"s","name":"W","role":"owner"}],"isAdmin":true,
    "pendingAgreements":[{"kind":"terms","version":"2"}]})";

// --- me

TEST_F(APIClientTest, FetchMeReadsBothSpellings)
{
    for (const QByteArray &document :
         {meDocument,
          QByteArray(meDocument).replace("userId", "user_id").replace("isAdmin", "is_admin")}) {
        m_server.on("/v1/me", answer(200, document));
        const Me me = await(m_api.fetchMe()).value();
        EXPECT_EQ(last().method, "GET");
        EXPECT_EQ(last().target, "/v1/me");
        EXPECT_EQ(me.userId, QStringLiteral("u"));
        EXPECT_EQ(me.personId, std::nullopt);
        EXPECT_EQ(me.workspaceId, QStringLiteral("w"));
        EXPECT_EQ(me.user, (UserInfo{QStringLiteral("Ada"), {}, {}}));
        ASSERT_EQ(me.workspaces.size(), 1);
        EXPECT_EQ(me.workspaces.first().role, QStringLiteral("owner"));
        EXPECT_EQ(me.isAdmin, true);
        EXPECT_EQ(me.pendingAgreements->first(),
                  (PendingAgreement{QStringLiteral("terms"), QStringLiteral("2")}));
    }
}

TEST_F(APIClientTest, FetchMeDoesNotLookAtTheStatus)
{
    m_server.on("/v1/me", answer(500, meDocument));
    EXPECT_TRUE(await(m_api.fetchMe()));
    m_server.on("/v1/me", answer(500, "oops"));
    EXPECT_NE(failureOf<DecodingError>(await(m_api.fetchMe())), nullptr);
    m_server.on("/v1/me", answer(200, R"({"userId":"u","user":{}})"));
    const auto incomplete = await(m_api.fetchMe());
    ASSERT_NE(failureOf<DecodingError>(incomplete), nullptr);
    EXPECT_EQ(failureOf<DecodingError>(incomplete)->path, QStringLiteral("workspaces"));
}

TEST_F(APIClientTest, SwitchWorkspaceGivesTheNewMe)
{
    m_server.on("/v1/workspaces/switch", answer(200));
    m_server.on("/v1/me", answer(200, meDocument));
    const auto me = await(m_api.switchWorkspace(QStringLiteral("w")));
    EXPECT_EQ(me.value().userId, QStringLiteral("u"));
    ASSERT_EQ(m_server.requests().size(), 2);
    EXPECT_EQ(m_server.requests().first().method, "POST");
    EXPECT_EQ(m_server.requests().first().body, R"({"workspace_id":"w"})");
    EXPECT_EQ(last().target, "/v1/me");
}

TEST_F(APIClientTest, SwitchWorkspaceThatIsRefusedAsksNoFurther)
{
    m_server.on("/v1/workspaces/switch", answer(403, "no"));
    const auto me = await(m_api.switchWorkspace(QStringLiteral("w")));
    ASSERT_NE(failureOf<APIError>(me), nullptr);
    EXPECT_EQ(m_server.requests().size(), 1);
}

// --- conversations

const QByteArray summaries = R"([{"id":"c","channel":"app","message_count":2,"createdAt":"t"}])";

TEST_F(APIClientTest, ListConversationsNamesLimitAndChannel)
{
    m_server.on("/v1/conversations", answer(200, summaries));
    const auto list = await(m_api.listConversations(50)).value();
    EXPECT_EQ(last().method, "GET");
    EXPECT_EQ(last().target, "/v1/conversations?limit=50");
    const ConversationSummary expected{QStringLiteral("c"), QStringLiteral("app"), {}, {}, 2,
                                       QStringLiteral("t")};
    EXPECT_EQ(list, QList<ConversationSummary>{expected});
    ASSERT_TRUE(await(m_api.listConversations(7, QStringLiteral("a&b"))));
    EXPECT_EQ(last().target, "/v1/conversations?limit=7&channel=a&b") << "the channel goes out raw";
}

TEST_F(APIClientTest, ListConversationsDoesNotLookAtTheStatus)
{
    m_server.on("/v1/conversations", answer(503, summaries));
    EXPECT_TRUE(await(m_api.listConversations(1)));
    m_server.on("/v1/conversations", answer(503, R"({"error":"down"})"));
    EXPECT_NE(failureOf<DecodingError>(await(m_api.listConversations(1))), nullptr);
}

TEST_F(APIClientTest, FetchMessagesMatchesKeysExactly)
{
    m_server.on("/v1/conversations/c/messages",
                answer(200, R"([{"id":"m","role":"assistant","parts":[{"type":"tool","toolName":"t",
                    "toolCallId":"1","input":{"a_b":1},"tool_name":"ignored"}]}])"));
    const auto messages = await(m_api.fetchMessages(QStringLiteral("c"))).value();
    ASSERT_EQ(messages.size(), 1);
    const StoredPart part = messages.first().parts.first();
    EXPECT_EQ(part.toolName, QStringLiteral("t"));
    EXPECT_EQ(part.input->prettyString(), QStringLiteral("{\n    \"a_b\": 1\n}"));
    EXPECT_EQ(part.output, std::nullopt);

    m_server.on(
        "/v1/conversations/c/messages",
        answer(200, R"([{"id":"m","role":"user","parts":[{"type":"t","tool_name":"x"}]}])"));
    EXPECT_EQ(await(m_api.fetchMessages(QStringLiteral("c")))->first().parts.first().toolName,
              std::nullopt);
}

TEST_F(APIClientTest, FetchMessagesTakesNothingBut200)
{
    for (const int status : {201, 204, 404, 500}) {
        m_server.on("/v1/conversations/c/messages", answer(status, "[]"));
        EXPECT_EQ(kindOf(await(m_api.fetchMessages(QStringLiteral("c")))), Kind::BadServerResponse)
            << status;
    }
}

TEST_F(APIClientTest, AnIdKeepsItsSlashAndEncodesTheRest)
{
    m_server.on("/v1/conversations/a/b%20c%3F/messages", answer(200, "[]"));
    EXPECT_TRUE(await(m_api.fetchMessages(QStringLiteral("a/b c?"))));
    EXPECT_EQ(last().target, "/v1/conversations/a/b%20c%3F/messages");
}

TEST_F(APIClientTest, RenameSendsTheTitleAndHidesTheServersWords)
{
    m_server.on("/v1/conversations/c", answer(204));
    EXPECT_TRUE(await(m_api.renameConversation(QStringLiteral("c"), QStringLiteral("a \"b\""))));
    EXPECT_EQ(last().method, "PATCH");
    EXPECT_EQ(last().body, R"({"title":"a \"b\""})");
    EXPECT_EQ(last().header("Content-Type"), "application/json");
    for (const int status : {300, 404, 500}) {
        m_server.on("/v1/conversations/c", answer(status, "why"));
        EXPECT_EQ(kindOf(await(m_api.renameConversation(QStringLiteral("c"), {}))),
                  Kind::BadServerResponse)
            << status;
    }
}

// --- answers that are records of the stores

struct ReadCase
{
    const char *name;
    QCoro::Task<base::Result<QByteArray>> (*call)(APIClient &);
    QByteArray method;
    QByteArray target;
    QByteArray body;
};

class Reading : public APIClientTest, public testing::WithParamInterface<ReadCase>
{};

TEST_P(Reading, AsksExactlyThisAndGivesTheBodyOfASuccess)
{
    const QByteArray path = GetParam().target.split('?').first();
    m_server.on(path, answer(200, R"({"some":"text"})"));
    EXPECT_EQ(await(GetParam().call(m_api)).value(), R"({"some":"text"})");
    EXPECT_EQ(last().method, GetParam().method);
    EXPECT_EQ(last().target, GetParam().target);
    EXPECT_EQ(last().body, GetParam().body);
    m_server.on(path, answer(500, " no\n"));
    const auto failed = await(GetParam().call(m_api));
    ASSERT_NE(failureOf<APIError>(failed), nullptr);
    EXPECT_EQ(*failureOf<APIError>(failed), (APIError{500, QStringLiteral("no")}));
}

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

INSTANTIATE_TEST_SUITE_P(
    All, Reading,
    testing::Values(
        ReadCase{"settings",
                 [](APIClient &api) { return api.saveSettings(text("codex"), text("gpt")); }, "PUT",
                 "/v1/settings", R"({"codexModel":"gpt","provider":"codex"})"},
        ReadCase{"settingsWithoutModel",
                 [](APIClient &api) { return api.saveSettings(text("claude"), {}); }, "PUT",
                 "/v1/settings", R"({"provider":"claude"})"},
        ReadCase{"settingsWithNothing", [](APIClient &api) { return api.saveSettings({}, {}); },
                 "PUT", "/v1/settings", "{}"},
        ReadCase{"integration",
                 [](APIClient &api) { return api.integrationStatus(text("google")); }, "GET",
                 "/v1/integrations/google/status", ""},
        ReadCase{"adminWorkspace",
                 [](APIClient &api) { return api.fetchAdminWorkspace(text("a b")); }, "GET",
                 "/v1/admin/workspaces/a%20b", ""},
        ReadCase{"audit", [](APIClient &api) { return api.auditLog(text("s?"), 100); }, "GET",
                 "/v1/workspaces/s%3F/audit?limit=100", ""}),
    [](const auto &info) { return info.param.name; });

// --- changes whose answer is dropped

struct ChangeCase
{
    const char *name;
    QCoro::Task<base::Result<void>> (*call)(APIClient &);
    QByteArray method;
    QByteArray target;
    QByteArray body;
};

class Changing : public APIClientTest, public testing::WithParamInterface<ChangeCase>
{};

TEST_P(Changing, AsksExactlyThisAndFailsLikeSend)
{
    for (const int status : {200, 204, 299}) {
        m_server.on(GetParam().target, answer(status));
        EXPECT_TRUE(await(GetParam().call(m_api))) << status;
    }
    EXPECT_EQ(last().method, GetParam().method);
    EXPECT_EQ(last().target, GetParam().target);
    EXPECT_EQ(last().body, GetParam().body);
    EXPECT_EQ(last().header("Content-Type").has_value(), !GetParam().body.isEmpty());
    m_server.on(GetParam().target, answer(404, "\xff"));
    const auto failed = await(GetParam().call(m_api));
    ASSERT_NE(failureOf<APIError>(failed), nullptr);
    EXPECT_EQ(*failureOf<APIError>(failed), (APIError{404, QStringLiteral("<no body>")}));
}

INSTANTIATE_TEST_SUITE_P(
    All, Changing,
    testing::Values(
        ChangeCase{"deleteConversation",
                   [](APIClient &api) { return api.deleteConversation(text("c/1")); }, "DELETE",
                   "/v1/conversations/c/1", ""},
        ChangeCase{"setAdminModel",
                   [](APIClient &api) { return api.setAdminWorkspaceModel(text("s"), text("m")); },
                   "PATCH", "/v1/admin/workspaces/s", R"({"model":"m"})"},
        ChangeCase{"deleteCatalogEntry",
                   [](APIClient &api) { return api.deleteAdminCatalogEntry(text("e e")); },
                   "DELETE", "/v1/admin/catalog/e%20e", ""},
        ChangeCase{"uninstall", [](APIClient &api) { return api.uninstallBundle(text("b#")); },
                   "DELETE", "/v1/marketplace/installed/b%23", ""},
        ChangeCase{"enableSkill",
                   [](APIClient &api) {
                       return api.setLibraryEnabled(LibraryKind::Skills, text("k"), true);
                   },
                   "PATCH", "/v1/settings/skills/k", R"({"enabled":true})"},
        ChangeCase{"disableSubagent",
                   [](APIClient &api) {
                       return api.setLibraryEnabled(LibraryKind::Subagents, text("k"), false);
                   },
                   "PATCH", "/v1/settings/subagents/k", R"({"enabled":false})"},
        ChangeCase{
            "deleteSkill",
            [](APIClient &api) { return api.deleteLibraryItem(LibraryKind::Skills, text("k")); },
            "DELETE", "/v1/settings/skills/k", ""},
        ChangeCase{
            "deleteSubagent",
            [](APIClient &api) { return api.deleteLibraryItem(LibraryKind::Subagents, text("k")); },
            "DELETE", "/v1/settings/subagents/k", ""},
        ChangeCase{"disconnect",
                   [](APIClient &api) { return api.disconnectIntegration(text("slack")); },
                   "DELETE", "/v1/integrations/slack/status", ""},
        ChangeCase{"revokeInvite",
                   [](APIClient &api) { return api.revokeInvite(text("s"), text("i")); }, "DELETE",
                   "/v1/workspaces/s/invites/i", ""},
        ChangeCase{
            "memberRole",
            [](APIClient &api) { return api.setMemberRole(text("s"), text("u"), text("admin")); },
            "PATCH", "/v1/workspaces/s/members/u/role", R"({"role":"admin"})"},
        ChangeCase{"removeMember",
                   [](APIClient &api) { return api.removeMember(text("s"), text("u")); }, "DELETE",
                   "/v1/workspaces/s/members/u", ""}),
    [](const auto &info) { return info.param.name; });

TEST_F(APIClientTest, InstallBundleHasARuleOfItsOwn)
{
    m_server.on("/v1/marketplace/install", answer(200));
    EXPECT_TRUE(await(m_api.installBundle(QStringLiteral("cat"))));
    EXPECT_EQ(last().method, "POST");
    EXPECT_EQ(last().body, R"({"catalogId":"cat"})");
    EXPECT_EQ(last().header("Content-Type"), "application/json");
    const QList<std::pair<QByteArray, QString>> bodies{
        {" kept \n", QStringLiteral(" kept \n")}, {"\xff", QString()}, {"", QString()}};
    for (const auto &[body, kept] : bodies) {
        m_server.on("/v1/marketplace/install", answer(422, body));
        const auto failed = await(m_api.installBundle(QStringLiteral("cat")));
        ASSERT_NE(failureOf<APIError>(failed), nullptr);
        EXPECT_EQ(*failureOf<APIError>(failed), (APIError{422, kept}));
    }
}

} // namespace
} // namespace velto::service
