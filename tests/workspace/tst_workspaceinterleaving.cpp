// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "support/interleaving.h"
#include "support/storetest.h"
#include "workspace/adminstore.h"
#include "workspace/profilestore.h"
#include "workspace/workspacestore.h"

namespace velto::workspace
{
namespace
{

using test::Interleaving;
using test::UnreliableService;

constexpr int steps = 150;

QByteArray num(int n)
{
    return QByteArray::number(n);
}

/// The number in the first record of a list that was loaded.
std::optional<int> first(const auto &list, auto number)
{
    return list->records() ? std::optional(number(list->records()->first())) : std::nullopt;
}

std::optional<int> of(const auto &record, auto number)
{
    return record ? std::optional(static_cast<int>(number(*record))) : std::nullopt;
}

const auto idNumber = [](const auto &record) { return record.id.toInt(); };

QByteArray overviewOf(int n)
{
    return R"({"totals":{"users":)" + num(n) +
           R"(,"workspaces":1,"memberships":1,"workspacesWithVelto":1},"trend":{"usersLast7d":0,)"
           R"("usersLast30d":0,"workspacesLast7d":0,"workspacesLast30d":0},"recentUsers":[],)"
           R"("recentWorkspaces":[]})";
}

class WorkspaceInterleaving : public test::StoreTest, public testing::WithParamInterface<int>
{
protected:
    void serveProfile()
    {
        service.serve("/v1/me/profile", [](int n) {
            return R"({"memberships":[],"currentWorkspace":{"id":")" + num(n) +
                   R"(","slug":"s","name":"n"},"integrations":{"googleConnected":true}})";
        });
        service.serve("/v1/admin/overview", overviewOf);
    }
    void serveWorkspace()
    {
        service.serve("/v1/workspaces/s", [](int n) {
            return R"({"workspace":{"id":")" + num(n) +
                   R"(","slug":"s","name":"n"},"membership":{"workspaceId":"w","userId":"u",)"
                   R"("role":"r"},"memberCount":1})";
        });
        service.serve("/v1/workspaces/s/members", [](int n) {
            return R"({"members":[{"userId":")" + num(n) +
                   R"(","displayName":"d","email":"e","role":"r"}]})";
        });
        // The same path takes a new invite.
        service.serve("/v1/workspaces/s/invites", [](int n) {
            return R"({"invited":[],"failed":[],"invites":[{"id":")" + num(n) +
                   R"(","email":"e","role":"r"}]})";
        });
        service.serve("/v1/workspaces/s/audit", [](int n) {
            return R"({"entries":[{"id":)" + num(n) + R"(,"action":"a"}]})";
        });
    }
    void serveAdministration()
    {
        service.serve("/v1/admin/overview", overviewOf);
        service.serve("/v1/admin/users", [](int n) {
            return R"({"users":[{"id":")" + num(n) + R"(","email":"e","workspaceCount":1}]})";
        });
        service.serve("/v1/admin/workspaces", [](int n) {
            return R"({"workspaces":[{"id":")" + num(n) +
                   R"(","slug":"s","name":"n","memberCount":1}]})";
        });
        service.serve("/v1/admin/workspaces/s", [](int n) {
            return R"({"workspace":{"id":")" + num(n) + R"(","slug":"s","name":"n"},"members":[]})";
        });
        service.serve("/v1/admin/catalog", [](int n) {
            return R"({"entries":[{"id":")" + num(n) +
                   R"(","version":"1","name":"n","tagline":"t","whatItDoes":"w"}]})";
        });
        service.serve("/v1/admin/catalog/s", [](int) { return QByteArray("{}"); });
    }

    const QString s = QStringLiteral("s");
    UnreliableService service{server, static_cast<unsigned>(GetParam())};
};

TEST_P(WorkspaceInterleaving, TheProfileOnlyShowsWhatTheServiceHasSent)
{
    serveProfile();
    ProfileStore store(api);
    int announced = 0;
    QObject::connect(&store, &ProfileStore::isSuperAdminChanged, &store, [&] { ++announced; });
    Interleaving run(service, {{"/v1/me/profile", [&] {
                                    return of(store.profile(), [](const UserProfile &profile) {
                                        return profile.currentWorkspace->id.toInt();
                                    });
                                }}});
    run.run(
        steps, {[&] { run.start(store.load()); }}, [&] { store.reset(); },
        [&] { return store.isLoading(); });
    EXPECT_EQ(announced > 0, store.isSuperAdmin().has_value());
}

TEST_P(WorkspaceInterleaving, TheWorkspaceOnlyShowsWhatTheServiceHasSent)
{
    serveWorkspace();
    WorkspaceStore store(api);
    const auto detail = [&] {
        return of(store.detail(),
                  [](const WorkspaceDetail &record) { return record.workspace.id.toInt(); });
    };
    const auto member = [&] {
        return first(store.members(),
                     [](const WorkspaceMember &record) { return record.userId.toInt(); });
    };
    const auto audit = [&] {
        return first(store.audit(),
                     [](const AuditRow &record) { return static_cast<int>(record.id); });
    };
    Interleaving run(service, {{"/v1/workspaces/s", detail},
                               {"/v1/workspaces/s/members", member},
                               {"/v1/workspaces/s/invites",
                                [&] { return first(store.invites(), idNumber); }, true},
                               {"/v1/workspaces/s/audit", audit}});
    run.run(
        steps,
        {[&] { run.start(store.loadDetail(s)); }, [&] { run.start(store.loadMembers(s)); },
         [&] { run.start(store.loadAudit(s)); }, [&] { run.start(store.createInvite(s, s, s)); }},
        [&] { store.reset(); }, [&] { return store.isLoading(); });
}

TEST_P(WorkspaceInterleaving, TheAdministrationOnlyShowsWhatTheServiceHasSent)
{
    serveAdministration();
    AdminStore store(api);
    const auto overview = [&] {
        return of(store.overview(),
                  [](const AdminOverview &record) { return record.totals.users; });
    };
    const auto detail = [&] {
        return of(store.workspaceDetail(),
                  [](const AdminWorkspaceDetail &record) { return record.workspace.id.toInt(); });
    };
    Interleaving run(service,
                     {{"/v1/admin/overview", overview},
                      {"/v1/admin/users", [&] { return first(store.users(), idNumber); }},
                      {"/v1/admin/workspaces", [&] { return first(store.workspaces(), idNumber); }},
                      {"/v1/admin/workspaces/s", detail, true},
                      {"/v1/admin/catalog", [&] { return first(store.catalog(), idNumber); }}});
    run.run(
        steps,
        {[&] { run.start(store.loadOverview()); }, [&] { run.start(store.loadUsers()); },
         [&] { run.start(store.loadWorkspaces()); }, [&] { run.start(store.loadCatalog()); },
         [&] { run.start(store.loadWorkspaceDetail(s)); },
         [&] { run.start(store.deleteCatalogEntry(s)); }},
        [&] { store.reset(); }, [&] { return store.isLoading(); });
}

TEST_P(WorkspaceInterleaving, TheProfileMayGoAtAnyMoment)
{
    serveProfile();
    auto store = std::make_unique<ProfileStore>(api);
    Interleaving run(service, {});
    run.abandon({[&] { run.start(store->load()); }, [&] { run.start(store->load()); }},
                [&] { store.reset(); });
}

TEST_P(WorkspaceInterleaving, TheWorkspaceMayGoAtAnyMoment)
{
    serveWorkspace();
    auto store = std::make_unique<WorkspaceStore>(api);
    Interleaving run(service, {});
    run.abandon({[&] { run.start(store->loadDetail(s)); },
                 [&] { run.start(store->loadMembers(s)); }, [&] { run.start(store->loadAudit(s)); },
                 [&] { run.start(store->createInvite(s, s, s)); }},
                [&] { store.reset(); });
}

TEST_P(WorkspaceInterleaving, TheAdministrationMayGoAtAnyMoment)
{
    serveAdministration();
    auto store = std::make_unique<AdminStore>(api);
    Interleaving run(service, {});
    run.abandon({[&] { run.start(store->loadOverview()); }, [&] { run.start(store->loadUsers()); },
                 [&] { run.start(store->loadWorkspaceDetail(s)); },
                 [&] { run.start(store->deleteCatalogEntry(s)); }},
                [&] { store.reset(); });
}

INSTANTIATE_TEST_SUITE_P(Seed, WorkspaceInterleaving, testing::Range(0, 15));

} // namespace
} // namespace velto::workspace
