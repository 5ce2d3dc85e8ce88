// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/codesyntaxhighlighter.h"
#include "markdown/render/imageprovider.h"
#include "markdown/render/softbreak.h"
#include "markdown/theme/tablestyle.h"
#include "markdown/theme/theme.h"

#include <QPointer>
#include <QUrl>

#include <memory>

namespace velto::markdown
{

/// What a block knows besides its own content. Passed down by value: a list changes the level for
/// what is in it and for nothing else.
struct Environment
{
    QUrl baseURL;
    QUrl imageBaseURL;
    std::shared_ptr<const CodeSyntaxHighlighter> codeSyntaxHighlighter =
        std::make_shared<const PlainTextCodeSyntaxHighlighter>();
    QPointer<ImageProvider> imageProvider;
    std::shared_ptr<InlineImageProvider> inlineImageProvider;
    bool tightSpacingEnabled = false;
    int listLevel = 0;
    SoftBreak::Mode softBreakMode = SoftBreak::Mode::Space;
    TableBorderStyle tableBorderStyle;
    TableBackgroundStyle tableBackgroundStyle =
        TableBackgroundStyle::header(Ink::primary().faded(0.04));
    TextAttributes text;  ///< The attributes that all text starts from.
    qreal lineHeight = 1; ///< Distance of lines in proportion to the font's own.
    Theme theme;

    /// Where a picture is: relative to the pictures' own base if there is one.
    [[nodiscard]] QUrl resolvedImage(const QString &source) const
    {
        const QUrl &base = imageBaseURL.isEmpty() ? baseURL : imageBaseURL;
        return base.resolved(QUrl(source));
    }
};

} // namespace velto::markdown
