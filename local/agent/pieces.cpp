// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/agent/pieces.h"

#include "local/text.h"

#include <array>

namespace velto::local
{

std::string_view Pieces::next()
{
    static constexpr std::array<std::size_t, 7> Sizes{4, 6, 3, 8, 5, 7, 4};
    const std::size_t size = Sizes[m_count++ % Sizes.size()];
    const std::size_t begin = m_position;
    for (std::size_t i = 0; i < size && m_position < m_text.size(); ++i)
        m_position += characterLength(m_text, m_position);
    return m_text.substr(begin, m_position - begin);
}

} // namespace velto::local
