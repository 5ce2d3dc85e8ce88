// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/secretstore.h"

struct _GCancellable;

namespace velto::keyring
{

/// The Secret Service, through libsecret.
///
/// Entries go to the default collection. Where that or the entry is locked, all three calls have
/// the desktop ask its user, and fail with `Locked` when the user declines or nobody can be asked.
/// Each call speaks to the service afresh, so a keyring that was restarted is found again.
class LibsecretStore final : public platform::SecretStore
{
public:
    LibsecretStore();
    ~LibsecretStore() override;
    Q_DISABLE_COPY_MOVE(LibsecretStore)

    [[nodiscard]] base::Result<void> save(const QString &service, const QString &account,
                                          const QString &value) override;
    [[nodiscard]] base::Result<std::optional<QString>> load(const QString &service,
                                                            const QString &account) override;
    [[nodiscard]] base::Result<void> remove(const QString &service,
                                            const QString &account) override;
    void abandon() override;

private:
    _GCancellable *m_abandoned;
};

} // namespace velto::keyring
