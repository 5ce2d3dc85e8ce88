// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/integrationstatus.h"
#include "agent/marketplacerecords.h"
#include "agent/settingsrecords.h"
#include "support/recordtest.h"

namespace velto::agent
{
namespace
{

using test::decoded;
using test::expectFields;

TEST(AgentRecords, RequireWhatIsRequiredAndNothingElse)
{
    expectFields<AgentConfig>({"model"},
                              {"maxTokens:1", "maxToolRounds:2",
                               "tools:[{\"name\":\"n\",\"description\":\"d\"}]", "toolCount:3"});
    expectFields<AgentConfigTool>({"name", "description"}, {});
    expectFields<AppSettings>({"model"}, {"provider", "codexModel"});
    expectFields<LibrarySkill>({"id", "name", "description", "enabled:true"}, {"updatedAt"});
    expectFields<LibrarySubagent>(
        {"id", "name", "description", "enabled:true"},
        {"source", "model", "maxTurns:4", "mcpServerNames:[\"a\"]", "tools:[\"b\"]", "updatedAt"});
    expectFields<VeltoToolCatalog>({"groups:[]"}, {});
    expectFields<VeltoToolGroup>({"key", "label", "available:true", "tools:[]"},
                                 {"availabilityLabel", "note", "connectHref", "connectLabel"});
    expectFields<VeltoTool>({"name", "description", "available:true"}, {"source"});
    expectFields<IntegrationStatus>({"connected:true"},
                                    {"veltoEmail", "expiresAt", "expired:true", "teamId",
                                     "teamName", "workspaceId", "workspaceName", "installedAt",
                                     "organizationId", "accountLogin", "accountType", "appSlug",
                                     "accountName", "hubDomain", "botUserId", "appId", "username"});
}

TEST(AgentRecords, OfTheMarketplaceDoSoToo)
{
    expectFields<MarketplaceCatalog>({"entries:[]"}, {});
    expectFields<MarketplaceItem>(
        {"id", "version", "name", "tagline", "whatItDoes"},
        {"source", "iconKey", "accent", "exampleQueries:[\"q\"]", "resources:{}",
         "installed:{\"enabled\":true}",
         "integrations:[{\"id\":\"i\",\"label\":\"l\",\"connected\":true}]"});
    expectFields<MarketplaceResources>({}, {"agents:[{\"slug\":\"s\",\"description\":\"d\"}]",
                                            "skills:[{\"slug\":\"s\",\"description\":\"d\"}]"});
    expectFields<MarketplaceAgentResource>(
        {"slug", "description"},
        {"model", "maxTurns:5", "mcpServerNames:[\"a\"]", "tools:[\"b\"]"});
    expectFields<MarketplaceSkillResource>({"slug", "description"}, {});
    expectFields<MarketplaceInstalledStatus>({"enabled:true"}, {"catalogId", "installedAt"});
    expectFields<MarketplaceIntegrationState>({"id", "label", "connected:true"}, {"connectUrl"});
}

MarketplaceItem bundle(const QByteArray &more)
{
    return decoded<MarketplaceItem>(
               R"({"id":"a","version":"1","name":"n","tagline":"t","whatItDoes":"w")" + more + "}")
        .value();
}

TEST(MarketplaceItem, CountsWhatItHolds)
{
    const QByteArray one = R"([{"slug":"s","description":"d"}])";
    EXPECT_EQ(bundle("").agentCount(), 0);
    EXPECT_EQ(bundle("").skillCount(), 0);
    EXPECT_EQ(bundle(R"(,"resources":{})").agentCount(), 0);
    EXPECT_EQ(bundle(R"(,"resources":{"agents":)" + one + "}").agentCount(), 1);
    EXPECT_EQ(bundle(R"(,"resources":{"agents":)" + one + "}").skillCount(), 0);
    EXPECT_EQ(bundle(R"(,"resources":{"skills":)" + one + "}").skillCount(), 1);
}

TEST(MarketplaceItem, IsInstalledWhetherEnabledOrNot)
{
    EXPECT_FALSE(bundle("").isInstalled());
    EXPECT_FALSE(bundle(R"(,"installed":null)").isInstalled());
    EXPECT_TRUE(bundle(R"(,"installed":{"enabled":true})").isInstalled());
    EXPECT_TRUE(bundle(R"(,"installed":{"enabled":false})").isInstalled());
}

} // namespace
} // namespace velto::agent
