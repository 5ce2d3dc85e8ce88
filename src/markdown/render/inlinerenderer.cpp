// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/inlinerenderer.h"

#include "markdown/model/htmltag.h"

#include <algorithm>
#include <utility>

namespace velto::markdown
{

namespace
{

template<typename... Handlers>
struct Overloaded : Handlers...
{
    using Handlers::operator()...;
};
template<typename... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

QString withoutLeadingWhitespace(const QString &text)
{
    const auto *const start =
        std::find_if_not(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
    return text.mid(start - text.cbegin());
}

} // namespace

AttributedStringInlineRenderer::AttributedStringInlineRenderer(QUrl baseURL,
                                                               InlineTextStyles textStyles,
                                                               SoftBreak::Mode softBreakMode,
                                                               TextAttributes attributes)
    : m_baseURL(std::move(baseURL))
    , m_textStyles(std::move(textStyles))
    , m_softBreakMode(softBreakMode)
    , m_attributes(std::move(attributes))
{}

void AttributedStringInlineRenderer::render(const QList<InlineNode> &nodes)
{
    for (const InlineNode &node : nodes)
        renderNode(node);
}

void AttributedStringInlineRenderer::renderNode(const InlineNode &node)
{
    const bool breaksLines = m_softBreakMode == SoftBreak::Mode::LineBreak;
    std::visit(Overloaded{
                   [this](const inlines::Text &text) { renderText(text.text); },
                   [this](const inlines::Code &code) {
                       m_result.append(code.text, m_textStyles.code.applied(m_attributes));
                   },
                   [this](const inlines::Html &html) { renderHtml(html.text); },
                   [this](const inlines::Emphasis &emphasis) {
                       renderStyled(m_textStyles.emphasis, emphasis.children);
                   },
                   [this](const inlines::Strong &strong) {
                       renderStyled(m_textStyles.strong, strong.children);
                   },
                   [this](const inlines::Strikethrough &struck) {
                       renderStyled(m_textStyles.strikethrough, struck.children);
                   },
                   [this](const inlines::Link &link) { renderLink(link); },
                   [this](const inlines::Image &image) { renderImage(image); },
                   [&](const inlines::SoftBreak &) {
                       m_result.append(breaksLines ? QStringLiteral("\n") : QStringLiteral(" "),
                                       m_attributes);
                   },
                   [this](const inlines::LineBreak &) {
                       m_result.append(QStringLiteral("\n"), m_attributes);
                   },
               },
               node.kind);
}

void AttributedStringInlineRenderer::renderText(const QString &text)
{
    const bool skips = std::exchange(m_shouldSkipNextWhitespace, false);
    m_result.append(skips ? withoutLeadingWhitespace(text) : text, m_attributes);
}

void AttributedStringInlineRenderer::renderHtml(const QString &html)
{
    const auto tag = HTMLTag::first(html);
    if (!tag || tag->name.toLower() != QLatin1String("br"))
        return m_result.append(html, m_attributes);
    m_result.append(QStringLiteral("\n"), m_attributes);
    m_shouldSkipNextWhitespace = true;
}

void AttributedStringInlineRenderer::renderLink(const inlines::Link &link)
{
    const TextAttributes around = m_attributes;
    m_textStyles.link.apply(m_attributes);
    m_attributes.link = m_baseURL.resolved(QUrl(link.destination));
    render(link.children);
    m_attributes = around;
}

void AttributedStringInlineRenderer::renderStyled(const TextStyle &style,
                                                  const QList<InlineNode> &children)
{
    const TextAttributes around = m_attributes;
    style.apply(m_attributes);
    render(children);
    m_attributes = around;
}

void AttributedStringInlineRenderer::renderImage(const inlines::Image &image)
{
    render(image.children);
}

TextInlineRenderer::TextInlineRenderer(QUrl baseURL, InlineTextStyles textStyles,
                                       QHash<QString, QImage> images, SoftBreak::Mode softBreakMode,
                                       TextAttributes attributes)
    : AttributedStringInlineRenderer(std::move(baseURL), std::move(textStyles), softBreakMode,
                                     std::move(attributes))
    , m_images(std::move(images))
{}

void TextInlineRenderer::renderImage(const inlines::Image &image)
{
    if (m_images.contains(image.source))
        mutableResult().appendImage(image.source, attributes());
    else
        AttributedStringInlineRenderer::renderImage(image);
}

QString plainText(const QList<InlineNode> &nodes)
{
    AttributedStringInlineRenderer renderer({}, {}, SoftBreak::Mode::Space, {});
    renderer.render(nodes);
    return renderer.result().plainText();
}

} // namespace velto::markdown
