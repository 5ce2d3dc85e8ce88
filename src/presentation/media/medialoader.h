// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/transport.h"

#include <QCoroTask>

#include <stop_token>

namespace velto::presentation
{

/// Gets the bytes of a picture in an answer. Redirects follow the transport's rule: beyond the
/// origin of the request there is no "Authorization", not even for a chain that comes back. Main
/// thread.
class MediaLoader final
{
public:
    static constexpr qint64 defaultByteLimit = qint64(32) * 1024 * 1024;

    /// `transport` outlives the loader. An answer of more than `byteLimit` fails as soon as it
    /// shows.
    explicit MediaLoader(service::Transport &transport, qint64 byteLimit = defaultByteLimit);

    /// The body of an answer of 200 to 299; any other fails with `BadServerResponse`.
    [[nodiscard]] QCoro::Task<base::Result<QByteArray>> load(service::HTTPRequest request,
                                                             std::stop_token stop = {});

private:
    service::Transport &m_transport;
    const qint64 m_byteLimit;
};

} // namespace velto::presentation
