// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/adminstore.h"

namespace velto::workspace
{

AdminStore::Source<AdminCatalogResponse> AdminStore::catalogSource()
{
    return get<AdminCatalogResponse>(
        QStringLiteral("/v1/admin/catalog"),
        [this](AdminCatalogResponse answer) { m_catalog.assign(std::move(answer.entries)); });
}

QCoro::Task<void> AdminStore::loadOverview()
{
    const auto keep = [this](AdminOverview answer) {
        assign(m_overview, std::move(answer), &AdminStore::overviewChanged);
    };
    return load(get<AdminOverview>(QStringLiteral("/v1/admin/overview"), keep));
}

QCoro::Task<void> AdminStore::loadUsers()
{
    const auto keep = [this](AdminUsersResponse answer) {
        m_users.assign(std::move(answer.users));
    };
    return load(get<AdminUsersResponse>(QStringLiteral("/v1/admin/users"), keep));
}

QCoro::Task<void> AdminStore::loadWorkspaces()
{
    const auto keep = [this](AdminWorkspacesResponse answer) {
        m_workspaces.assign(std::move(answer.workspaces));
    };
    return load(get<AdminWorkspacesResponse>(QStringLiteral("/v1/admin/workspaces"), keep));
}

QCoro::Task<void> AdminStore::loadCatalog()
{
    return load(catalogSource());
}

QCoro::Task<void> AdminStore::loadWorkspaceDetail(QString slug)
{
    const QPointer<AdminStore> self(this);
    setWorkspaceDetail({});
    auto answer = co_await api().fetchAdminWorkspace<AdminWorkspaceDetail>(slug);
    if (!self)
        co_return;
    if (answer)
        setWorkspaceDetail(std::move(*answer));
    else
        setLoadError(base::description(answer.error()));
}

QCoro::Task<bool> AdminStore::deleteCatalogEntry(QString id)
{
    return change([this, id] { return api().deleteAdminCatalogEntry(id); }, catalogSource());
}

void AdminStore::reset()
{
    FeatureStore::reset();
    assign(m_overview, {}, &AdminStore::overviewChanged);
    m_users.assign({});
    m_workspaces.assign({});
    setWorkspaceDetail({});
    m_catalog.assign({});
}

void AdminStore::setWorkspaceDetail(std::optional<AdminWorkspaceDetail> detail)
{
    assign(m_workspaceDetail, std::move(detail), &AdminStore::workspaceDetailChanged);
}

} // namespace velto::workspace
