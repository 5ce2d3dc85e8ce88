// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/featurestore.h"
#include "workspace/workspacerecords.h"

namespace velto::workspace
{

/// One workspace at a time: its record, members, invitations and audit log. Every operation names
/// the workspace; what was loaded of an earlier one stays until the next load or reset.
class WorkspaceStore final : public service::FeatureStore
{
    Q_OBJECT
    /// Undefined until loaded.
    Q_PROPERTY(QVariant detail READ detail NOTIFY detailChanged FINAL)
    Q_PROPERTY(velto::service::RecordListModel *members READ members CONSTANT FINAL)
    /// Not loaded as well when the caller may not see them.
    Q_PROPERTY(velto::service::RecordListModel *invites READ invites CONSTANT FINAL)
    Q_PROPERTY(velto::service::RecordListModel *audit READ audit CONSTANT FINAL)

public:
    using Members = service::RecordList<WorkspaceMember, &WorkspaceMember::userId>;
    using Invites = service::RecordList<WorkspaceInvite, &WorkspaceInvite::id>;
    using Audit = service::RecordList<AuditRow, &AuditRow::id>;

    explicit WorkspaceStore(service::APIClient &api, QObject *parent = nullptr);
    ~WorkspaceStore() override;

    [[nodiscard]] const base::Optional<WorkspaceDetail> &detail() const { return m_detail; }
    [[nodiscard]] Members *members() { return &m_members; }
    [[nodiscard]] Invites *invites() { return &m_invites; }
    [[nodiscard]] Audit *audit() { return &m_audit; }

    QCoro::Task<void> loadDetail(QString slug);
    QCoro::Task<void> loadMembers(QString slug);
    /// The latest 100 entries.
    QCoro::Task<void> loadAudit(QString slug);
    /// True when the service took the request, also if it could not invite the address.
    QCoro::Task<bool> createInvite(QString slug, QString email, QString role);
    void reset() override;

    /// For the changes that a screen makes by itself.
    using FeatureStore::setActionError;

    Q_INVOKABLE void startLoadDetail(const QString &slug) { loadDetail(slug); }
    Q_INVOKABLE void startLoadMembers(const QString &slug) { loadMembers(slug); }
    Q_INVOKABLE void startLoadAudit(const QString &slug) { loadAudit(slug); }

signals:
    void detailChanged();

private:
    Reply<void> fetchMembersAndInvites(QString slug);
    Reply<void> sendInvite(QString slug, CreateInviteRequest invite);

    base::Optional<WorkspaceDetail> m_detail;
    Members m_members;
    Invites m_invites;
    Audit m_audit;
};

} // namespace velto::workspace
