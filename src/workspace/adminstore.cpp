// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/adminstore.h"

namespace velto::workspace
{

AdminStore::Source<AdminCatalogResponse> AdminStore::catalogSource()
{
    return get(QStringLiteral("/v1/admin/catalog"), m_catalog, &AdminCatalogResponse::entries);
}

QCoro::Task<void> AdminStore::loadOverview()
{
    return load(
        get(QStringLiteral("/v1/admin/overview"), m_overview, &AdminStore::overviewChanged));
}

QCoro::Task<void> AdminStore::loadUsers()
{
    return load(get(QStringLiteral("/v1/admin/users"), m_users, &AdminUsersResponse::users));
}

QCoro::Task<void> AdminStore::loadWorkspaces()
{
    return load(get(QStringLiteral("/v1/admin/workspaces"), m_workspaces,
                    &AdminWorkspacesResponse::workspaces));
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
