// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/curlhandle.h"
#include "service/transport.h"

namespace velto::service
{

/// True for methods that may be carried out twice without harm.
[[nodiscard]] bool isIdempotent(const QByteArray &method);

/// True when a header can be sent: no line break or null hides in it.
[[nodiscard]] bool areSendable(const HeaderList &headers);

/// Puts `request` into `handle`, all but the callbacks. The list that comes back must live as long
/// as the handle works, and so must the request's body.
[[nodiscard]] CurlList configure(CURL *handle, const HTTPRequest &request);

} // namespace velto::service
