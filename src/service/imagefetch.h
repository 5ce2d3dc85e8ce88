// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/transport.h"

#include <stop_token>

namespace velto::service
{

/// What the download of one picture may take.
struct ImageFetchLimits
{
    /// A larger answer fails as soon as it shows, and its connection is closed.
    qint64 bytes = qint64(32) * 1024 * 1024;
    std::chrono::milliseconds timeout = std::chrono::seconds(15);
};

/// The answer to `request`, of whatever status. A body of more than `bytes` fails as soon as that
/// shows.
[[nodiscard]] QCoro::Task<base::Result<HTTPResponse>>
fetchWithin(Transport &transport, HTTPRequest request, qint64 bytes, std::stop_token stop);

/// The answer to a GET for a picture on any host, of whatever status. Nothing that tells who asks
/// goes along: no "Authorization", no cookies.
[[nodiscard]] QCoro::Task<base::Result<HTTPResponse>>
fetchImage(Transport &transport, QUrl url, ImageFetchLimits limits, std::stop_token stop);

/// True when the answer says that its bytes are not to be kept.
[[nodiscard]] bool forbidsStoring(const HTTPHead &head);

} // namespace velto::service
