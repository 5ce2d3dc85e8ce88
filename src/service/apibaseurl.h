// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"

#include <QUrl>

namespace velto::service
{

/// Where the service is: `VELTO_API_BASE_URL` when it is set and parses, else the address that the
/// build was made with. Computed once per process.
[[nodiscard]] QUrl apiBaseURL();

/// The rule behind `apiBaseURL`, for a given value of the variable (null when unset).
[[nodiscard]] QUrl baseURLFrom(const QByteArray &environmentValue);

/// REST and chat paths: `path` begins with "/" and replaces any path that the base carries. It may
/// hold a query and is already percent-encoded. Fails with `BadURL`.
[[nodiscard]] base::Result<QUrl> resolved(const QUrl &base, const QString &path);

/// OAuth paths: appended to the base, whose own path stays.
[[nodiscard]] QUrl appended(const QUrl &base, const QString &path);

} // namespace velto::service
