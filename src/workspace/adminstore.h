// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/featurestore.h"
#include "workspace/adminrecords.h"
#include "workspace/adminworkspacerecords.h"

namespace velto::workspace
{

/// The administrator's view of the whole platform. Who may have it, the service decides alone.
class AdminStore final : public service::FeatureStore
{
    Q_OBJECT
    /// Undefined until loaded, like `workspaceDetail`.
    Q_PROPERTY(QVariant overview READ overview NOTIFY overviewChanged FINAL)
    Q_PROPERTY(velto::service::RecordListModel *users READ users CONSTANT FINAL)
    Q_PROPERTY(velto::service::RecordListModel *workspaces READ workspaces CONSTANT FINAL)
    Q_PROPERTY(QVariant workspaceDetail READ workspaceDetail NOTIFY workspaceDetailChanged FINAL)
    Q_PROPERTY(velto::service::RecordListModel *catalog READ catalog CONSTANT FINAL)

public:
    using Users = service::RecordList<AdminUser, &AdminUser::id>;
    using Workspaces = service::RecordList<AdminWorkspace, &AdminWorkspace::id>;
    using Catalog = service::RecordList<CatalogEntry, &CatalogEntry::id>;

    explicit AdminStore(service::APIClient &api, QObject *parent = nullptr);
    ~AdminStore() override;

    [[nodiscard]] const base::Optional<AdminOverview> &overview() const { return m_overview; }
    [[nodiscard]] Users *users() { return &m_users; }
    [[nodiscard]] Workspaces *workspaces() { return &m_workspaces; }
    [[nodiscard]] const base::Optional<AdminWorkspaceDetail> &workspaceDetail() const
    {
        return m_workspaceDetail;
    }
    [[nodiscard]] Catalog *catalog() { return &m_catalog; }

    QCoro::Task<void> loadOverview();
    QCoro::Task<void> loadUsers();
    QCoro::Task<void> loadWorkspaces();
    QCoro::Task<void> loadCatalog();
    /// Unlike the others it clears first, so that a workspace never shows under the title of
    /// another, and leaves `isLoading` and an earlier `loadError` alone.
    QCoro::Task<void> loadWorkspaceDetail(QString slug);
    /// Gives whether it succeeded.
    QCoro::Task<bool> deleteCatalogEntry(QString id);
    void reset() override;

    Q_INVOKABLE void startLoadOverview() { loadOverview(); }
    Q_INVOKABLE void startLoadUsers() { loadUsers(); }
    Q_INVOKABLE void startLoadWorkspaces() { loadWorkspaces(); }
    Q_INVOKABLE void startLoadCatalog() { loadCatalog(); }
    Q_INVOKABLE void startLoadWorkspaceDetail(const QString &slug) { loadWorkspaceDetail(slug); }
    Q_INVOKABLE void startDeleteCatalogEntry(const QString &id) { deleteCatalogEntry(id); }

signals:
    void overviewChanged();
    void workspaceDetailChanged();

private:
    [[nodiscard]] Source catalogSource();

    base::Optional<AdminOverview> m_overview;
    Users m_users;
    Workspaces m_workspaces;
    base::Optional<AdminWorkspaceDetail> m_workspaceDetail;
    Catalog m_catalog;
};

} // namespace velto::workspace
