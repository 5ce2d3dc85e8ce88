// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"

#include <QString>

#include <memory>
#include <optional>

namespace velto::platform
{

/// The desktop's secure store: one secret text per service and account. There is no fallback that
/// would write a secret anywhere else.
///
/// Every call blocks, and may wait for as long as the desktop asks its user to unlock the store;
/// call from worker threads only. Any number of threads at once. All fail with `KeychainError`.
class SecretStore
{
public:
    virtual ~SecretStore() = default;

    /// Replaces the secret of an entry that exists and makes the entry otherwise.
    [[nodiscard]] virtual base::Result<void> save(const QString &service, const QString &account,
                                                  const QString &value) = 0;
    /// Empty when there is no such entry; a failure when that can't be known.
    [[nodiscard]] virtual base::Result<std::optional<QString>> load(const QString &service,
                                                                    const QString &account) = 0;
    /// Succeeds when there is no such entry.
    [[nodiscard]] virtual base::Result<void> remove(const QString &service,
                                                    const QString &account) = 0;

    /// Tells the calls that wait for the user to give up and makes all later ones fail; for the end
    /// of the process. A call that waits on even so touches this object no more. Any thread.
    virtual void abandon() = 0;
};

/// The store of the system that this was built for.
[[nodiscard]] std::unique_ptr<SecretStore> makeSystemSecretStore();

} // namespace velto::platform
