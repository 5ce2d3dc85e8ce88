// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/adminstore.h"

#include <QPointer>

namespace velto::workspace
{

AdminStore::AdminStore(service::APIClient &api, QObject *parent)
    : FeatureStore(api, parent)
{}

AdminStore::~AdminStore() = default;

AdminStore::Source AdminStore::catalogSource()
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
    assign(m_workspaceDetail, {}, &AdminStore::workspaceDetailChanged);
    const Source detail{
        [=, this](const std::stop_token &) { return api().fetchAdminWorkspace(slug); },
        into(m_workspaceDetail, &AdminStore::workspaceDetailChanged)};
    const base::Result<void> fetched = co_await fetch(detail);
    if (!fetched && self)
        setLoadError(base::description(fetched.error()));
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
    assign(m_workspaceDetail, {}, &AdminStore::workspaceDetailChanged);
    m_catalog.assign({});
}

} // namespace velto::workspace
