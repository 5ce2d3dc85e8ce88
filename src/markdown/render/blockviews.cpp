// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/blockviews.h"

#include "markdown/render/codebox.h"
#include "markdown/render/componentbox.h"
#include "markdown/render/imagebox.h"
#include "markdown/render/listbox.h"
#include "markdown/render/sequencebox.h"
#include "markdown/render/tablebox.h"

namespace velto::markdown
{

namespace
{

/// Makes the view of each kind of block.
struct Dispatch
{
    BoxHost &host;
    const EnvironmentPointer &environment;
    const BlockNode &block;

    using BoxPointer = std::unique_ptr<Box>;

    BoxPointer operator()(const blocks::Blockquote &quote) const
    {
        const BlockView view = styledView(environment->theme.blockquote(), block);
        auto box = std::make_unique<BlockSequence>(host, styled(environment, view), view,
                                                   QAccessible::Section);
        box->setBlocks(quote.children);
        return box;
    }
    BoxPointer operator()(const blocks::BulletedList &) const { return list(); }
    BoxPointer operator()(const blocks::NumberedList &) const { return list(); }
    BoxPointer operator()(const blocks::TaskList &) const { return list(); }
    BoxPointer operator()(const blocks::CodeBlock &code) const;
    BoxPointer operator()(const blocks::HtmlBlock &) const { return text(); }
    BoxPointer operator()(const blocks::Paragraph &paragraph) const
    {
        const std::optional<ImageFlow> pictures = picturesOf(paragraph.content);
        if (!pictures)
            return text();
        const BlockView view = styledView(environment->theme.image(), block);
        return std::make_unique<ImageBox>(host, environment, view, *pictures);
    }
    BoxPointer operator()(const blocks::Heading &) const { return text(); }
    BoxPointer operator()(const blocks::Table &table) const
    {
        const BlockView view = styledView(environment->theme.table(), block);
        return std::make_unique<TableBox>(host, environment, view, table);
    }
    BoxPointer operator()(const blocks::ThematicBreak &) const
    {
        return std::make_unique<DividerBox>(host, environment,
                                            environment->theme.thematicBreak()());
    }

    [[nodiscard]] BoxPointer list() const { return ListBox::make(host, environment, block); }
    [[nodiscard]] BoxPointer text() const
    {
        const std::optional<InlineBlock> found = inlineBlock(block, *environment);
        Q_ASSERT(found);
        auto box =
            std::make_unique<TextBox>(host, environment, found->view, found->kind, TextSetting{});
        box->setNodes(found->nodes);
        return box;
    }
};

std::optional<QVariantMap> codeProperties(const BlockNode &block)
{
    const auto *code = std::get_if<blocks::CodeBlock>(&block.kind);
    if (code == nullptr)
        return std::nullopt;
    const CodeBlockConfiguration configuration = CodeBox::configuration(*code);
    return QVariantMap{{QStringLiteral("language"), configuration.language.value_or(QString())},
                       {QStringLiteral("content"), configuration.content}};
}

Dispatch::BoxPointer Dispatch::operator()(const blocks::CodeBlock &code) const
{
    const BlockView view = environment->theme.codeBlock()(CodeBox::configuration(code));
    if (std::holds_alternative<BlockView::Component>(view.content()))
        return std::make_unique<ComponentBox>(host, environment, view, codeProperties, block);
    return std::make_unique<CodeBox>(host, environment, code);
}

} // namespace

std::optional<InlineBlock> inlineBlock(const BlockNode &block, const Environment &environment)
{
    const Theme &theme = environment.theme;
    if (const auto *paragraph = std::get_if<blocks::Paragraph>(&block.kind)) {
        if (picturesOf(paragraph->content))
            return std::nullopt;
        return InlineBlock{TextBox::Kind::Paragraph, styledView(theme.paragraph(), block),
                           paragraph->content};
    }
    if (const auto *heading = std::get_if<blocks::Heading>(&block.kind)) {
        const std::size_t index = static_cast<std::size_t>(qBound(1, heading->level, 6)) - 1;
        return InlineBlock{TextBox::Kind::Heading, styledView(theme.headings()[index], block),
                           heading->content};
    }
    if (const auto *html = std::get_if<blocks::HtmlBlock>(&block.kind)) {
        const InlineNode text{inlines::Text{withoutFinalLineFeed(html->content)}};
        return InlineBlock{TextBox::Kind::Html, styledView(theme.paragraph(), block), {text}};
    }
    return std::nullopt;
}

std::unique_ptr<Box> makeBox(BoxHost &host, const EnvironmentPointer &environment,
                             const BlockNode &block)
{
    return std::visit(Dispatch{host, environment, block}, block.kind);
}

BlockView styledView(const Theme::Block &style, const BlockNode &block)
{
    return styledView(style, QList<BlockNode>{block});
}

BlockView styledView(const Theme::Block &style, const QList<BlockNode> &blocks)
{
    return style({BlockView::label(), MarkdownContent(blocks)});
}

QString withoutFinalLineFeed(const QString &text)
{
    return text.endsWith(QLatin1Char('\n')) ? text.chopped(1) : text;
}

} // namespace velto::markdown
