// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/transport.h"

#include <optional>

namespace velto::service
{

/// How many hops a request follows before it fails with `TooManyRedirects`.
inline constexpr int maximumRedirects = 20;

/// True when `url` is something that the transport can ask: http or https, with a host.
[[nodiscard]] bool isHTTPAddress(const QUrl &url);

/// Same scheme, host and port; a port that is not named is the scheme's own.
[[nodiscard]] bool isSameOrigin(const QUrl &a, const QUrl &b);

/// The request that follows `current` after the answer `head`, or absent when the answer is not a
/// redirect and stands for itself. `origin` is the address of the first request of the chain, the
/// only one that may see its "Authorization". Fails with `InsecureRedirect` or `BadURL`.
[[nodiscard]] base::Result<std::optional<HTTPRequest>>
nextHop(const HTTPRequest &current, const QUrl &origin, const HTTPHead &head);

} // namespace velto::service
