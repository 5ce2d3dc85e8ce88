// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/linereader.h"

#include <algorithm>

namespace velto::chat
{

void LineReader::append(const QByteArray &bytes)
{
    if (m_start > 0) {
        m_buffer.remove(0, m_start);
        m_scanned -= m_start;
        m_start = 0;
    }
    m_buffer += bytes;
}

std::optional<QByteArrayView> LineReader::next()
{
    if (m_afterReturn && m_start < m_buffer.size()) {
        m_afterReturn = false;
        if (m_buffer.at(m_start) == '\n')
            m_scanned = ++m_start;
    }
    const auto *end = m_buffer.cend();
    const auto *terminator = std::find_if(m_buffer.cbegin() + m_scanned, end,
                                          [](char c) { return c == '\n' || c == '\r'; });
    m_scanned = terminator - m_buffer.cbegin();
    if (terminator == end)
        return std::nullopt;
    const QByteArrayView line(m_buffer.cbegin() + m_start, terminator);
    m_afterReturn = *terminator == '\r';
    m_start = ++m_scanned;
    return line;
}

std::optional<QByteArrayView> LineReader::rest()
{
    if (m_start >= m_buffer.size())
        return std::nullopt;
    const QByteArrayView line(m_buffer.cbegin() + m_start, m_buffer.cend());
    m_start = m_scanned = m_buffer.size();
    return line;
}

} // namespace velto::chat
