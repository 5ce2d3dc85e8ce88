// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/htmltag.h"

#include <QRegularExpression>

namespace velto::markdown
{

namespace
{

QRegularExpression compiledTag()
{
    QRegularExpression expression(QStringLiteral(R"(<\/?([a-zA-Z0-9]+)[^>]*>)"));
    if (!expression.isValid())
        qFatal("the expression of an HTML tag: %s", qPrintable(expression.errorString()));
    expression.optimize();
    return expression;
}

} // namespace

std::optional<HTMLTag> HTMLTag::first(const QString &html)
{
    static const QRegularExpression tag = compiledTag();
    const QRegularExpressionMatch match = tag.match(html);
    if (!match.hasMatch())
        return std::nullopt;
    return HTMLTag{match.captured(1)};
}

} // namespace velto::markdown
