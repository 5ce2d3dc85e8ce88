// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace velto::auth
{

/// 64 bytes from the system's secure random source in unpadded URL-safe base64: 86 characters.
[[nodiscard]] QString randomURLSafeString();

/// The S256 challenge of a PKCE verifier: 43 characters.
[[nodiscard]] QString codeChallenge(const QString &verifier);

} // namespace velto::auth
