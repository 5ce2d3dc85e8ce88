// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/integrations.h"

#include <gtest/gtest.h>

namespace velto::agent
{
namespace
{

using Provider = IntegrationProvider;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

struct Row
{
    Provider provider;
    const char *rawValue;
    const char *label;
    const char *symbol;
    const char *accountField;
};

const QList<Row> table{
    {Provider::Google, "google", "Google", "envelope", "veltoEmail"},
    {Provider::Slack, "slack", "Slack", "number", "teamName"},
    {Provider::Linear, "linear", "Linear", "line.3.horizontal", "organizationId"},
    {Provider::Notion, "notion", "Notion", "doc.text", "workspaceName"},
    {Provider::Github, "github", "GitHub", "chevron.left.forwardslash.chevron.right",
     "accountLogin"},
    {Provider::Chatwork, "chatwork", "Chatwork", "bubble.left.and.bubble.right", "accountName"},
    {Provider::Hubspot, "hubspot", "HubSpot", "h.circle", "hubDomain"},
    {Provider::Line, "line", "LINE", "message", "botUserId"},
    {Provider::Lark, "lark", "Lark", "bird", "appId"},
    {Provider::X, "x", "X", "xmark", "username"},
};

/// A connected status that has every text field, each with its own name as the value; or all but
/// one.
IntegrationStatus fullStatus(const QByteArray &without = {})
{
    QByteArray document = R"({"connected":true)";
    for (const QByteArray field :
         {"veltoEmail", "expiresAt", "teamId", "teamName", "workspaceId", "workspaceName",
          "installedAt", "organizationId", "accountLogin", "accountType", "appSlug", "accountName",
          "hubDomain", "botUserId", "appId", "username"}) {
        if (field != without)
            document += ",\"" + field + "\":\"" + field + "\"";
    }
    return base::json::decode<IntegrationStatus>(document + "}", base::json::Keys::Snake).value();
}

TEST(Integrations, AreTenInThisOrder)
{
    QList<Provider> expected;
    for (const Row &row : table)
        expected.append(row.provider);
    EXPECT_EQ(QList<Provider>(integrationProviders().begin(), integrationProviders().end()),
              expected);
}

TEST(Integrations, AreNamedByTheTable)
{
    for (const Row &row : table) {
        EXPECT_EQ(rawValue(row.provider), text(row.rawValue));
        EXPECT_EQ(label(row.provider), text(row.label));
        EXPECT_EQ(symbol(row.provider), text(row.symbol));
    }
}

TEST(Integrations, NameTheirAccountInOneField)
{
    for (const Row &row : table) {
        EXPECT_EQ(account(row.provider, fullStatus()), text(row.accountField)) << row.rawValue;
        EXPECT_EQ(account(row.provider, fullStatus(row.accountField)), std::nullopt)
            << row.rawValue;
    }
}

TEST(Integrations, AllHaveARowWhetherKnownOrNot)
{
    const QList<IntegrationRow> rows = integrationRows({});
    ASSERT_EQ(rows.size(), 10);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i],
                  (IntegrationRow{
                      table[i].provider, text(table[i].label), text(table[i].symbol), false, {}}));
    }
}

TEST(Integrations, ShowTheAccountOnlyWhileConnected)
{
    IntegrationStatus slackWithoutTeam = fullStatus("teamName");
    IntegrationStatus x = fullStatus();
    x.connected = false;
    const QList<IntegrationRow> rows = integrationRows(
        {{Provider::Google, fullStatus()}, {Provider::Slack, slackWithoutTeam}, {Provider::X, x}});
    EXPECT_TRUE(rows[0].connected);
    EXPECT_EQ(rows[0].account, text("veltoEmail"));
    EXPECT_TRUE(rows[1].connected);
    EXPECT_EQ(rows[1].account, std::nullopt);
    EXPECT_FALSE(rows[9].connected);
    EXPECT_EQ(rows[9].account, std::nullopt);
}

TEST(Integrations, ThatHaveExpiredReadAsConnected)
{
    IntegrationStatus status = fullStatus();
    status.expired = true;
    EXPECT_TRUE(integrationRows({{Provider::Lark, status}})[8].connected);
}

} // namespace
} // namespace velto::agent
