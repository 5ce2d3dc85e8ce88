// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/secretstore.h"

namespace velto::platform
{

/// The desktop's keyring, through a program that is started for each call: the libraries below it
/// take time to load and memory to keep, and a session has few calls.
///
/// A call takes as long as the helper does, without a limit, since that may wait for the user.
/// Where the helper itself fails, is missing or gives no proper answer, the status is `Unknown` and
/// a line of the log says what happened.
class HelperSecretStore final : public SecretStore
{
public:
    /// `program` is the path of `velto-keyring`.
    explicit HelperSecretStore(QString program);

    [[nodiscard]] base::Result<void> save(const QString &service, const QString &account,
                                          const QString &value) override;
    [[nodiscard]] base::Result<std::optional<QString>> load(const QString &service,
                                                            const QString &account) override;
    [[nodiscard]] base::Result<void> remove(const QString &service,
                                            const QString &account) override;
    /// A helper that doesn't end within a second of this is killed.
    void abandon() override;

    /// A share for each call, which may outlast the store that was called.
    class Abandonment;

private:
    QString m_program;
    std::shared_ptr<Abandonment> m_abandonment;
};

/// Where `velto-keyring` is for a program in `folder`: beside it, as in a build, else where an
/// installation puts it. No environment variable has a say, since the helper is told secrets.
[[nodiscard]] QString keyringHelper(const QString &folder);

} // namespace velto::platform
