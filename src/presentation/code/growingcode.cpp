// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/growingcode.h"

namespace velto::presentation
{

GrowingCode::GrowingCode(QStringView language)
{
    if (const Language *family = languageNamed(language))
        m_scanner.emplace(*family);
}

qsizetype GrowingCode::append(QStringView piece)
{
    m_text.append(piece);
    return m_scanner ? m_scanner->grow(m_text) : m_text.size();
}

const TokenRanges &GrowingCode::tokens() const
{
    static const TokenRanges none;
    return m_scanner ? m_scanner->tokens() : none;
}

} // namespace velto::presentation
