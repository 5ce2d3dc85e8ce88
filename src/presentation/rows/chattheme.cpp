// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/chattheme.h"

#include "presentation/code/growingcode.h"

#include <algorithm>
#include <utility>

namespace velto::presentation
{

using namespace markdown;

namespace
{

constexpr qreal codeSize = 11;
constexpr qreal codeOpacity = 0.88;
constexpr qreal codeLineHeight = 1.25;

TextStyle monospaced()
{
    return FontFamilyVariant{FontProperties::FamilyVariant::Monospaced};
}

TextStyle semibold(qreal size)
{
    return TextStyleBuilder::build(FontSize{size}, FontWeight{QFont::DemiBold});
}

Theme::Block heading(qreal size, qreal above, std::optional<qreal> below)
{
    return {[=](const BlockConfiguration &block) {
        return block.label.textStyle(semibold(size)).margin(above, below);
    }};
}

BlockView quote(const BlockConfiguration &block)
{
    return block.label.textStyle(ForegroundColor{Ink::secondary()})
        .padding({12, 0, 0, 0})
        .leadingBar(Ink::primary().faded(0.18), 2);
}

BlockView codeSurface(const BlockView &label, const Ink &ink, const Ink &fill)
{
    return label
        .textStyle(TextStyleBuilder::build(monospaced(), FontSize{codeSize}, ForegroundColor{ink}))
        .lineHeight(codeLineHeight)
        .padding({8, 8, 8, 8})
        .background(fill, 6)
        .scrolling(BlockView::ScrollBar::Hidden)
        .overlay(QUrl(QStringLiteral("qrc:/qt/qml/Velto/Presentation/CodeCopyButton.qml")));
}

BlockView plainCode(const CodeBlockConfiguration &block)
{
    return codeSurface(block.label, Ink::primary().faded(codeOpacity), Ink::primary().faded(0.04));
}

BlockView errorCode(const CodeBlockConfiguration &block)
{
    return codeSurface(block.label, Ink::failure(), Ink::failure().faded(0.08));
}

BlockView fencedCode(const CodeBlockConfiguration &block)
{
    BlockView view = plainCode(block).inset({4, 4, 4, 4});
    const QString language = block.language.value_or(QString()).trimmed();
    if (language.isEmpty())
        return view;
    return view.caption(
        language.toUpper(),
        TextStyleBuilder::build(semibold(9), ForegroundColor{Ink::secondary()}, TextTracking{0.6}),
        4);
}

/// One block of code with the colours of its tokens, on top of what the theme gives all code.
class ColouredCode final : public CodeHighlight
{
public:
    ColouredCode(const std::optional<QString> &language, TextAttributes attributes)
        : m_code(language.value_or(QString()).trimmed())
        , m_attributes(std::move(attributes))
    {}

    [[nodiscard]] qsizetype grow(const QString &code) override
    {
        return m_code.append(QStringView(code).sliced(m_code.text().size()));
    }

    [[nodiscard]] const QString &text() const override { return m_code.text(); }

    [[nodiscard]] AttributedString part(qsizetype from, qsizetype to) const override
    {
        AttributedString part;
        const auto add = [&](qsizetype end, const TextAttributes &attributes) {
            if (end > from)
                part.append(text().sliced(from, end - from), attributes);
            from = std::max(from, end);
        };
        const auto endsBefore = [](const TokenRange &token, qsizetype position) {
            return token.range.end <= position;
        };
        const TokenRanges &tokens = m_code.tokens();
        auto token = std::lower_bound(tokens.begin(), tokens.end(), from, endsBefore);
        for (; token != tokens.end() && token->range.start < to; ++token) {
            add(token->range.start, m_attributes);
            add(std::min(token->range.end, to), coloured(token->color));
        }
        add(to, m_attributes);
        return part;
    }

private:
    [[nodiscard]] TextAttributes coloured(TokenColor color) const
    {
        const Rgb parts = rgb(color);
        TextAttributes attributes = m_attributes;
        attributes.foregroundColor =
            Ink::of(QColor::fromRgbF(static_cast<float>(parts.red), static_cast<float>(parts.green),
                                     static_cast<float>(parts.blue)));
        return attributes;
    }

    GrowingCode m_code;
    TextAttributes m_attributes;
};

class TokenHighlighter final : public CodeSyntaxHighlighter
{
public:
    [[nodiscard]] AttributedString highlightCode(const QString &code,
                                                 const std::optional<QString> &language,
                                                 const TextAttributes &attributes) const override
    {
        ColouredCode coloured(language, attributes);
        (void)coloured.grow(code);
        return coloured.part(0, code.size());
    }

    [[nodiscard]] std::unique_ptr<CodeHighlight>
    highlight(const std::optional<QString> &language,
              const TextAttributes &attributes) const override
    {
        return std::make_unique<ColouredCode>(language, attributes);
    }
};

Theme makeChatTheme()
{
    return Theme()
        .text(TextStyleBuilder::build(FontSize{15.0}, ForegroundColor{Ink::primary()}))
        .strong(FontWeight{QFont::DemiBold})
        .link(ForegroundColor{Ink::accent()})
        .code(TextStyleBuilder::build(monospaced(), FontSize{em(0.92)},
                                      BackgroundColor{Ink::primary().faded(0.06)}))
        .heading(1, heading(20, 8, 2))
        .heading(2, heading(17, 6, 1))
        .heading(3, heading(15, 4, std::nullopt))
        .blockquote({quote})
        .listItem({[](const BlockConfiguration &block) { return block.label.margin(2, 2); }})
        .codeBlock({fencedCode});
}

} // namespace

const Theme &chatTheme()
{
    static const Theme theme = makeChatTheme();
    return theme;
}

const Theme &toolPayloadTheme()
{
    static const Theme theme = Theme().codeBlock({plainCode});
    return theme;
}

const Theme &toolErrorTheme()
{
    static const Theme theme = Theme().codeBlock({errorCode});
    return theme;
}

std::shared_ptr<const CodeSyntaxHighlighter> chatHighlighter()
{
    static const auto highlighter = std::make_shared<const TokenHighlighter>();
    return highlighter;
}

} // namespace velto::presentation
