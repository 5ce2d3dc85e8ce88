// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"
#include "service/records.h"

#include <QCoroTask>

namespace velto::service
{

/// Whoever can turn an expired access token into a new pair. Callers that ask at the same moment
/// share one refresh.
class TokenRefresher
{
public:
    virtual ~TokenRefresher() = default;
    /// Fails with `AuthError::SessionExpired` when the session can't be continued.
    [[nodiscard]] virtual QCoro::Task<base::Result<Tokens>> refresh() = 0;
};

} // namespace velto::service
