// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/featurestore.h"
#include "workspace/profilerecords.h"

namespace velto::workspace
{

/// The signed-in person, and whether they may administer the whole platform.
class ProfileStore final : public service::FeatureStore
{
    Q_OBJECT
    /// Undefined until loaded.
    Q_PROPERTY(QVariant profile READ profile NOTIFY profileChanged FINAL)
    /// Undefined until known.
    Q_PROPERTY(QVariant isSuperAdmin READ isSuperAdmin NOTIFY isSuperAdminChanged FINAL)

public:
    using FeatureStore::FeatureStore;

    [[nodiscard]] const base::Optional<UserProfile> &profile() const { return m_profile; }
    [[nodiscard]] const base::Optional<bool> &isSuperAdmin() const { return m_isSuperAdmin; }

    QCoro::Task<void> load();
    /// What is known of `isSuperAdmin` stays: the first answer holds for the life of the process,
    /// even for a later account.
    void reset() override;

    Q_INVOKABLE void startLoad() { load(); }

signals:
    void profileChanged();
    void isSuperAdminChanged();

private:
    Reply<void> fetchAndProbe();
    /// Asks until it knows: only an answer that says so makes it a yes, only a 403 a no.
    QCoro::Task<void> probeSuperAdmin();

    base::Optional<UserProfile> m_profile;
    base::Optional<bool> m_isSuperAdmin;
};

} // namespace velto::workspace
