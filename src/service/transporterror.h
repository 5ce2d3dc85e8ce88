// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"

namespace velto::service
{

/// What a code of the transport library means to us; `detail` are the library's own words.
[[nodiscard]] base::TransportError transportErrorFrom(int curlCode, const QString &detail);

} // namespace velto::service
