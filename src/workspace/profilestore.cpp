// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/profilestore.h"

#include "workspace/adminrecords.h"

#include <QPointer>

namespace velto::workspace
{

using base::Result;

QCoro::Task<void> ProfileStore::load()
{
    return FeatureStore::load([this] { return fetchAndProbe(); });
}

ProfileStore::Reply<void> ProfileStore::fetchAndProbe()
{
    const QPointer<ProfileStore> self(this);
    const auto source =
        get(QStringLiteral("/v1/me/profile"), m_profile, &ProfileStore::profileChanged);
    const Result<void> fetched = co_await fetch(source);
    if (!self)
        co_return Result<void>{};
    // Reported here, since the probe may take its time.
    if (!fetched)
        setLoadError(base::description(fetched.error()));
    co_await probeSuperAdmin();
    co_return Result<void>{};
}

QCoro::Task<void> ProfileStore::probeSuperAdmin()
{
    if (m_isSuperAdmin)
        co_return;
    const QPointer<ProfileStore> self(this);
    const Source probe = get(QStringLiteral("/v1/admin/overview"), nowhere<AdminOverview>());
    const Result<void> answer = co_await fetch(probe);
    if (!self)
        co_return;
    const auto *refusal = answer ? nullptr : std::get_if<base::APIError>(&answer.error());
    if (answer)
        assign(m_isSuperAdmin, true, &ProfileStore::isSuperAdminChanged);
    else if (refusal != nullptr && refusal->status == 403)
        assign(m_isSuperAdmin, false, &ProfileStore::isSuperAdminChanged);
}

void ProfileStore::reset()
{
    FeatureStore::reset();
    assign(m_profile, {}, &ProfileStore::profileChanged);
}

} // namespace velto::workspace
