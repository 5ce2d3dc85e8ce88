// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/tools/toolcode.h"

#include "presentation/rows/chattheme.h"

namespace velto::presentation
{

using markdown::BlockNode;
using markdown::MarkdownContent;

ToolCode::ToolCode(QQuickItem *parent)
    : Markdown(parent)
{
    setTheme(toolPayloadTheme());
    setCodeSyntaxHighlighter(chatHighlighter());
}

void ToolCode::setCode(const QString &code)
{
    if (m_code == code)
        return;
    m_code = code;
    emit codeChanged();
    show();
}

void ToolCode::setLanguage(const QString &language)
{
    if (m_language == language)
        return;
    m_language = language;
    emit codeChanged();
    show();
}

void ToolCode::setError(bool isError)
{
    if (m_isError == isError)
        return;
    m_isError = isError;
    emit codeChanged();
    setTheme(isError ? toolErrorTheme() : toolPayloadTheme());
    show();
}

void ToolCode::componentComplete()
{
    show();
    Markdown::componentComplete();
}

void ToolCode::show()
{
    markdown::blocks::CodeBlock block;
    if (!m_isError)
        block.fenceInfo = m_language;
    block.content = m_code + QLatin1Char('\n');
    setContent(MarkdownContent({BlockNode{block}}));
}

} // namespace velto::presentation
