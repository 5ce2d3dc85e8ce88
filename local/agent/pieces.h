// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string_view>

namespace velto::local
{

/// Cuts a text into pieces of 3 to 8 characters, as a language model would send them. A piece
/// never ends inside a UTF-8 sequence, and the same text is always cut alike.
class Pieces final
{
public:
    explicit Pieces(std::string_view text)
        : m_text(text)
    {}

    /// The next piece; empty at the end. The last one may be shorter.
    [[nodiscard]] std::string_view next();

private:
    std::string_view m_text;
    std::size_t m_position = 0;
    std::size_t m_count = 0;
};

} // namespace velto::local
