// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velto::local
{

/// Bytes of the UTF-8 sequence that starts at `position`, at least 1 and never beyond the end.
[[nodiscard]] std::size_t characterLength(std::string_view text, std::size_t position);

[[nodiscard]] std::string_view trimmed(std::string_view text);

/// One line of at most `limit` characters: white space runs become one blank, and what is cut
/// ends in "…", at a word's end where one is near.
[[nodiscard]] std::string shortened(std::string_view text, std::size_t limit);

/// The first sentence-like line of a Markdown answer as plain text, for lists of conversations.
[[nodiscard]] std::string gist(std::string_view markdown, std::size_t limit);

/// Unix seconds as "2026-11-21T10:53:32Z".
[[nodiscard]] std::string isoTime(std::int64_t seconds);

} // namespace velto::local
