// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/tokenrefresher.h"

#include <functional>

namespace velto::test
{

/// Hands out "fresh-1", "fresh-2", ... or the failure that the test has put in.
class CountingRefresher final : public service::TokenRefresher
{
public:
    [[nodiscard]] QCoro::Task<base::Result<service::Tokens>> refresh() override
    {
        ++calls;
        if (onRefresh)
            onRefresh();
        if (failure)
            co_return tl::unexpected(*failure);
        const QString token = QStringLiteral("fresh-%1").arg(calls);
        co_return service::Tokens{token, QStringLiteral("Bearer"), 900, QStringLiteral("next")};
    }

    int calls = 0;
    std::function<void()> onRefresh;
    std::optional<base::Failure> failure;
};

} // namespace velto::test
