// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace velto::local
{

/// 256 bits from the system's random source in the URL-safe base64 alphabet: a token, a code or
/// the id of a form.
[[nodiscard]] std::string randomSecret();

/// `prefix` and 32 hexadecimal digits from the same source.
[[nodiscard]] std::string randomId(std::string_view prefix);

/// SHA-256 in the URL-safe base64 alphabet without padding, 43 characters: the form in which a
/// secret is stored, and a code challenge is sent.
[[nodiscard]] std::string sha256Text(std::string_view text);

/// Compares in a time that doesn't depend on where the texts differ.
[[nodiscard]] bool sameSecret(std::string_view left, std::string_view right);

} // namespace velto::local
