// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/theme/theme.h"

namespace velto::markdown
{

namespace
{

constexpr RelativeSize markerWidth = em(1.5);

template<typename Configuration>
BlockStyle<Configuration> labelUnchanged()
{
    return {[](const Configuration &configuration) { return configuration.label; }};
}

BlockView markerFrame(const BlockView &mark)
{
    return mark.frame(markerWidth, BlockView::Alignment::Trailing);
}

BlockView bullet(const ListMarkerConfiguration &configuration)
{
    constexpr RelativeSize size = em(0.4);
    if (configuration.listLevel <= 1)
        return markerFrame(BlockView::symbol(QStringLiteral("circle.fill"), size));
    if (configuration.listLevel == 2)
        return markerFrame(BlockView::symbol(QStringLiteral("circle"), size));
    return markerFrame(BlockView::symbol(QStringLiteral("square.fill"), size));
}

BlockView number(const ListMarkerConfiguration &configuration)
{
    const QString text = QString::number(configuration.itemNumber) + QLatin1Char('.');
    return markerFrame(BlockView::text(text).textStyle(
        FontDigitVariant{FontProperties::DigitVariant::Monospaced}));
}

BlockView checkbox(const TaskListMarkerConfiguration &configuration)
{
    return markerFrame(BlockView::symbol(configuration.isCompleted
                                             ? QStringLiteral("checkmark.square.fill")
                                             : QStringLiteral("square")));
}

} // namespace

Theme::Theme()
    : m_text(EmptyTextStyle{})
    , m_code(FontFamilyVariant{FontProperties::FamilyVariant::Monospaced})
    , m_emphasis(FontStyle{FontProperties::Style::Italic})
    , m_strong(FontWeight{QFont::DemiBold})
    , m_strikethrough(StrikethroughStyle{LinePattern::Solid})
    , m_link(EmptyTextStyle{})
    , m_paragraph(labelUnchanged<BlockConfiguration>())
    , m_blockquote(labelUnchanged<BlockConfiguration>())
    , m_codeBlock(labelUnchanged<CodeBlockConfiguration>())
    , m_image(labelUnchanged<BlockConfiguration>())
    , m_list(labelUnchanged<BlockConfiguration>())
    , m_listItem(labelUnchanged<BlockConfiguration>())
    , m_taskListMarker({checkbox})
    , m_bulletedListMarker({bullet})
    , m_numberedListMarker({number})
    , m_table(labelUnchanged<BlockConfiguration>())
    , m_tableCell(labelUnchanged<TableCellConfiguration>())
    , m_thematicBreak({[] { return BlockView::divider(); }})
{
    m_headings.fill(labelUnchanged<BlockConfiguration>());
}

Theme Theme::text(TextStyle style) const
{
    Theme theme = *this;
    theme.m_text = std::move(style);
    return theme;
}

Theme Theme::code(TextStyle style) const
{
    Theme theme = *this;
    theme.m_code = std::move(style);
    return theme;
}

Theme Theme::emphasis(TextStyle style) const
{
    Theme theme = *this;
    theme.m_emphasis = std::move(style);
    return theme;
}

Theme Theme::strong(TextStyle style) const
{
    Theme theme = *this;
    theme.m_strong = std::move(style);
    return theme;
}

Theme Theme::strikethrough(TextStyle style) const
{
    Theme theme = *this;
    theme.m_strikethrough = std::move(style);
    return theme;
}

Theme Theme::link(TextStyle style) const
{
    Theme theme = *this;
    theme.m_link = std::move(style);
    return theme;
}

Theme Theme::heading(int level, Block style) const
{
    Q_ASSERT(level >= 1 && level <= 6);
    Theme theme = *this;
    theme.m_headings[static_cast<std::size_t>(level) - 1] = std::move(style);
    return theme;
}

Theme Theme::paragraph(Block style) const
{
    Theme theme = *this;
    theme.m_paragraph = std::move(style);
    return theme;
}

Theme Theme::blockquote(Block style) const
{
    Theme theme = *this;
    theme.m_blockquote = std::move(style);
    return theme;
}

Theme Theme::codeBlock(CodeBlock style) const
{
    Theme theme = *this;
    theme.m_codeBlock = std::move(style);
    return theme;
}

Theme Theme::image(Block style) const
{
    Theme theme = *this;
    theme.m_image = std::move(style);
    return theme;
}

Theme Theme::list(Block style) const
{
    Theme theme = *this;
    theme.m_list = std::move(style);
    return theme;
}

Theme Theme::listItem(Block style) const
{
    Theme theme = *this;
    theme.m_listItem = std::move(style);
    return theme;
}

Theme Theme::taskListMarker(TaskListMarker style) const
{
    Theme theme = *this;
    theme.m_taskListMarker = std::move(style);
    return theme;
}

Theme Theme::bulletedListMarker(ListMarker style) const
{
    Theme theme = *this;
    theme.m_bulletedListMarker = std::move(style);
    return theme;
}

Theme Theme::numberedListMarker(ListMarker style) const
{
    Theme theme = *this;
    theme.m_numberedListMarker = std::move(style);
    return theme;
}

Theme Theme::table(Block style) const
{
    Theme theme = *this;
    theme.m_table = std::move(style);
    return theme;
}

Theme Theme::tableCell(TableCell style) const
{
    Theme theme = *this;
    theme.m_tableCell = std::move(style);
    return theme;
}

Theme Theme::thematicBreak(Divider style) const
{
    Theme theme = *this;
    theme.m_thematicBreak = std::move(style);
    return theme;
}

} // namespace velto::markdown
