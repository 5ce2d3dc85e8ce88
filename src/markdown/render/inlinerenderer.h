// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/inlinenode.h"
#include "markdown/render/attributedstring.h"
#include "markdown/render/softbreak.h"
#include "markdown/theme/textstyle.h"
#include "markdown/theme/theme.h"

#include <QHash>
#include <QImage>
#include <QUrl>

namespace velto::markdown
{

struct InlineTextStyles
{
    TextStyle code;
    TextStyle emphasis;
    TextStyle strong;
    TextStyle strikethrough;
    TextStyle link;

    [[nodiscard]] static InlineTextStyles of(const Theme &theme)
    {
        return {theme.code(), theme.emphasis(), theme.strong(), theme.strikethrough(),
                theme.link()};
    }
};

/// Walks inline nodes with the current attributes. Ends with `result` holding their text, pictures
/// replaced by their alternative text.
class AttributedStringInlineRenderer
{
public:
    AttributedStringInlineRenderer(QUrl baseURL, InlineTextStyles textStyles,
                                   SoftBreak::Mode softBreakMode, TextAttributes attributes);
    virtual ~AttributedStringInlineRenderer() = default;

    void render(const QList<InlineNode> &nodes);
    [[nodiscard]] const AttributedString &result() const { return m_result; }

protected:
    virtual void renderImage(const inlines::Image &image);
    [[nodiscard]] AttributedString &mutableResult() { return m_result; }
    [[nodiscard]] const TextAttributes &attributes() const { return m_attributes; }

private:
    void renderNode(const InlineNode &node);
    void renderText(const QString &text);
    void renderHtml(const QString &html);
    void renderLink(const inlines::Link &link);
    void renderStyled(const TextStyle &style, const QList<InlineNode> &children);

    AttributedString m_result;
    QUrl m_baseURL;
    InlineTextStyles m_textStyles;
    SoftBreak::Mode m_softBreakMode;
    TextAttributes m_attributes;
    bool m_shouldSkipNextWhitespace = false;
};

/// The same with the pictures that have been loaded, by their source as written.
class TextInlineRenderer final : public AttributedStringInlineRenderer
{
public:
    TextInlineRenderer(QUrl baseURL, InlineTextStyles textStyles, QHash<QString, QImage> images,
                       SoftBreak::Mode softBreakMode, TextAttributes attributes);

protected:
    void renderImage(const inlines::Image &image) override;

private:
    QHash<QString, QImage> m_images;
};

/// What the nodes say, without any look.
[[nodiscard]] QString plainText(const QList<InlineNode> &nodes);

} // namespace velto::markdown
