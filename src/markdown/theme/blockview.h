// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/theme/ink.h"
#include "markdown/theme/textstyle.h"

#include <QMarginsF>
#include <QString>
#include <QUrl>

#include <optional>
#include <variant>

namespace velto::markdown
{

/// The distance that a block wants from its neighbours. Where margins meet, the greater one holds;
/// an absent one leaves it to the neighbour and to the sequence.
struct BlockMargin
{
    std::optional<qreal> top;
    std::optional<qreal> bottom;

    bool operator==(const BlockMargin &) const = default;
};

/// What a block style makes of a block: a description of a view. It starts from a label, a mark or
/// nothing, and each function gives a copy with something around it. Whoever lays blocks out knows
/// how to draw it; a style never touches an item of the screen.
///
/// From the inside to the outside: content, padding, background with bar, outline, divider and
/// overlay, caption, inset, margin. Lengths are in device-independent pixels.
class BlockView final
{
public:
    /// The block as it is rendered without a style.
    struct Label
    {
        bool operator==(const Label &) const = default;
    };
    /// A symbol of the icon vocabulary.
    struct Symbol
    {
        QString name;
        RelativeSize size;
        bool operator==(const Symbol &) const = default;
    };
    struct Text
    {
        QString text;
        bool operator==(const Text &) const = default;
    };
    /// A hairline across.
    struct Divider
    {
        bool operator==(const Divider &) const = default;
    };
    /// An item made from a QML component. It gets the fields of the style's configuration as
    /// properties and tells its height as its implicitHeight.
    struct Component
    {
        QUrl url;
        bool operator==(const Component &) const = default;
    };
    using Content = std::variant<Label, Symbol, Text, Divider, Component>;

    enum class Alignment { Leading, Center, Trailing };

    struct Background
    {
        Ink fill;
        qreal radius = 0;
        bool operator==(const Background &) const = default;
    };
    struct Bar
    {
        Ink ink;
        qreal width = 0;
        bool operator==(const Bar &) const = default;
    };
    /// A minimum width, and where in it the content stands.
    struct Frame
    {
        RelativeSize minimumWidth;
        Alignment alignment = Alignment::Leading;
        bool operator==(const Frame &) const = default;
    };

    [[nodiscard]] static BlockView label() { return BlockView(Label{}); }
    [[nodiscard]] static BlockView symbol(const QString &name, RelativeSize size = em(1))
    {
        return BlockView(Symbol{name, size});
    }
    [[nodiscard]] static BlockView text(const QString &text) { return BlockView(Text{text}); }
    [[nodiscard]] static BlockView divider() { return BlockView(Divider{}); }
    [[nodiscard]] static BlockView component(const QUrl &url) { return BlockView(Component{url}); }

    /// The style of all text within, applied after what is around.
    [[nodiscard]] BlockView textStyle(TextStyle style) const;
    [[nodiscard]] BlockView margin(std::optional<qreal> top, std::optional<qreal> bottom) const;
    /// Left is leading and right trailing, whatever the direction.
    [[nodiscard]] BlockView padding(QMarginsF padding) const;
    [[nodiscard]] BlockView background(Ink fill, qreal radius = 0) const;
    [[nodiscard]] BlockView outline(Ink ink) const;
    [[nodiscard]] BlockView leadingBar(Ink ink, qreal width) const;
    /// A hairline below the padding.
    [[nodiscard]] BlockView dividerBelow(Ink ink) const;
    /// Distance of lines in proportion to the font's own.
    [[nodiscard]] BlockView lineHeight(qreal height) const;
    [[nodiscard]] BlockView frame(RelativeSize minimumWidth, Alignment alignment) const;
    /// What shows that there is more to the side of what scrolls.
    enum class ScrollBar { Shown, Hidden };
    /// Lines are not broken; a label that is too wide scrolls sideways.
    [[nodiscard]] BlockView scrolling(ScrollBar bar = ScrollBar::Shown) const;
    /// Room around all that is drawn, caption and background included. Sides as for the padding.
    [[nodiscard]] BlockView inset(QMarginsF inset) const;
    /// An item made from a QML component, as large as the background and in front of the label. It
    /// gets the fields of the style's configuration as properties. Blocks of code only.
    [[nodiscard]] BlockView overlay(const QUrl &component) const;
    /// A line of text above the background. Blocks of code only.
    [[nodiscard]] BlockView caption(const QString &text, TextStyle style, qreal distance) const;

    struct Caption
    {
        QString text;
        TextStyle style;
        qreal distance = 0;
    };

    [[nodiscard]] const Content &content() const { return m_content; }
    [[nodiscard]] const TextStyle &textStyle() const { return m_textStyle; }
    [[nodiscard]] const BlockMargin &margin() const { return m_margin; }
    [[nodiscard]] const QMarginsF &padding() const { return m_padding; }
    [[nodiscard]] const std::optional<Background> &background() const { return m_background; }
    [[nodiscard]] const std::optional<Ink> &outline() const { return m_outline; }
    [[nodiscard]] const std::optional<Bar> &leadingBar() const { return m_bar; }
    [[nodiscard]] const std::optional<Ink> &dividerBelow() const { return m_divider; }
    [[nodiscard]] const std::optional<qreal> &lineHeight() const { return m_lineHeight; }
    [[nodiscard]] const std::optional<Frame> &frame() const { return m_frame; }
    [[nodiscard]] const std::optional<Caption> &caption() const { return m_caption; }
    [[nodiscard]] const QMarginsF &inset() const { return m_inset; }
    [[nodiscard]] const QUrl &overlay() const { return m_overlay; }
    [[nodiscard]] bool isScrolling() const { return m_isScrolling; }
    [[nodiscard]] ScrollBar scrollBar() const { return m_scrollBar; }
    /// Nothing was put around the label.
    [[nodiscard]] bool isPlainLabel() const;

private:
    explicit BlockView(Content content)
        : m_content(std::move(content))
    {}

    Content m_content;
    TextStyle m_textStyle;
    BlockMargin m_margin;
    QMarginsF m_padding;
    std::optional<Background> m_background;
    std::optional<Ink> m_outline;
    std::optional<Bar> m_bar;
    std::optional<Ink> m_divider;
    std::optional<qreal> m_lineHeight;
    std::optional<Frame> m_frame;
    std::optional<Caption> m_caption;
    QMarginsF m_inset;
    QUrl m_overlay;
    bool m_isScrolling = false;
    ScrollBar m_scrollBar = ScrollBar::Shown;
    bool m_isPlain = true;
};

} // namespace velto::markdown
