// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/attributedstring.h"

#include <numeric>

namespace velto::markdown
{

void AttributedString::append(const QString &text, const TextAttributes &attributes)
{
    if (text.isEmpty())
        return;
    if (!m_runs.isEmpty() && m_runs.constLast().image.isEmpty() &&
        m_runs.constLast().attributes == attributes)
        m_runs.last().text += text;
    else
        m_runs.append({text, attributes, {}});
}

void AttributedString::appendImage(const QString &source, const TextAttributes &attributes)
{
    m_runs.append({QString(QChar::ObjectReplacementCharacter), attributes, source});
}

qsizetype AttributedString::length() const
{
    return std::accumulate(m_runs.cbegin(), m_runs.cend(), qsizetype(0),
                           [](qsizetype sum, const TextRun &run) { return sum + run.text.size(); });
}

QString AttributedString::plainText() const
{
    QString text;
    text.reserve(length());
    for (const TextRun &run : m_runs)
        text += run.text;
    return text;
}

} // namespace velto::markdown
