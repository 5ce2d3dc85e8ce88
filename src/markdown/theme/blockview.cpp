// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/theme/blockview.h"

namespace velto::markdown
{

BlockView BlockView::textStyle(TextStyle style) const
{
    BlockView view = *this;
    view.m_textStyle = TextStyleBuilder::build(m_textStyle, std::move(style));
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::margin(std::optional<qreal> top, std::optional<qreal> bottom) const
{
    BlockView view = *this;
    view.m_margin = {top, bottom};
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::padding(QMarginsF padding) const
{
    BlockView view = *this;
    view.m_padding = padding;
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::background(Ink fill, qreal radius) const
{
    BlockView view = *this;
    view.m_background = Background{fill, radius};
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::outline(Ink ink) const
{
    BlockView view = *this;
    view.m_outline = ink;
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::leadingBar(Ink ink, qreal width) const
{
    BlockView view = *this;
    view.m_bar = Bar{ink, width};
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::dividerBelow(Ink ink) const
{
    BlockView view = *this;
    view.m_divider = ink;
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::lineHeight(qreal height) const
{
    BlockView view = *this;
    view.m_lineHeight = height;
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::frame(RelativeSize minimumWidth, Alignment alignment) const
{
    BlockView view = *this;
    view.m_frame = Frame{minimumWidth, alignment};
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::scrolling(ScrollBar bar) const
{
    BlockView view = *this;
    view.m_isScrolling = true;
    view.m_scrollBar = bar;
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::inset(QMarginsF inset) const
{
    BlockView view = *this;
    view.m_inset = inset;
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::overlay(const QUrl &component) const
{
    BlockView view = *this;
    view.m_overlay = component;
    view.m_isPlain = false;
    return view;
}

BlockView BlockView::caption(const QString &text, TextStyle style, qreal distance) const
{
    BlockView view = *this;
    view.m_caption = Caption{text, std::move(style), distance};
    view.m_isPlain = false;
    return view;
}

bool BlockView::isPlainLabel() const
{
    return m_isPlain && std::holds_alternative<Label>(m_content);
}

} // namespace velto::markdown
