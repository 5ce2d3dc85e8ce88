// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/chattheme.h"

#include "presentation/code/codehighlighter.h"
#include "presentation/code/syntaxhighlighter.h"

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

QString languageOf(const std::optional<QString> &fenceInfo)
{
    return fenceInfo.value_or(QString()).trimmed();
}

BlockView fencedCode(const CodeBlockConfiguration &block)
{
    BlockView view = plainCode(block).inset({4, 4, 4, 4});
    const QString language = languageOf(block.language);
    if (language.isEmpty())
        return view;
    return view.caption(
        language.toUpper(),
        TextStyleBuilder::build(semibold(9), ForegroundColor{Ink::secondary()}, TextTracking{0.6}),
        4);
}

TextAttributes inColour(TextAttributes attributes, TokenColor color)
{
    const Rgb parts = rgb(color);
    attributes.foregroundColor =
        Ink::of(QColor::fromRgbF(static_cast<float>(parts.red), static_cast<float>(parts.green),
                                 static_cast<float>(parts.blue)));
    return attributes;
}

/// A part of `code` with the colours of its tokens, on top of what the theme gives all code.
AttributedString coloured(const QString &code, const TokenRanges &tokens,
                          const TextAttributes &attributes, qsizetype from, qsizetype to)
{
    AttributedString part;
    const auto add = [&](qsizetype end, const TextAttributes &look) {
        if (end > from)
            part.append(code.sliced(from, end - from), look);
        from = std::max(from, end);
    };
    const auto endsBefore = [](const TokenRange &token, qsizetype position) {
        return token.range.end <= position;
    };
    auto token = std::lower_bound(tokens.begin(), tokens.end(), from, endsBefore);
    for (; token != tokens.end() && token->range.start < to; ++token) {
        add(token->range.start, attributes);
        add(std::min(token->range.end, to), inColour(attributes, token->color));
    }
    add(to, attributes);
    return part;
}

/// One block of code. What is long gets its colours from another thread, a little later.
class ColouredCode final : public CodeHighlight
{
public:
    ColouredCode(const std::optional<QString> &language, TextAttributes attributes)
        : m_language(languageOf(language))
        , m_attributes(std::move(attributes))
    {
        QObject::connect(&m_highlighter, &CodeHighlighter::tokensChanged, &m_highlighter,
                         [this](qsizetype from) {
                             if (m_isGrowing)
                                 m_changed = std::min(m_changed, from);
                             else
                                 tellChanged(from);
                         });
    }

    [[nodiscard]] qsizetype grow(const QString &code) override
    {
        m_changed = m_text.size();
        m_text = code;
        m_isGrowing = true;
        m_highlighter.setCode(code, m_language);
        m_isGrowing = false;
        return m_changed;
    }

    [[nodiscard]] const QString &text() const override { return m_text; }

    [[nodiscard]] AttributedString part(qsizetype from, qsizetype to) const override
    {
        return coloured(m_text, m_highlighter.tokens(), m_attributes, from, to);
    }

private:
    QString m_language;
    TextAttributes m_attributes;
    QString m_text;
    qsizetype m_changed = 0;
    bool m_isGrowing = false;
    CodeHighlighter m_highlighter;
};

class TokenHighlighter final : public CodeSyntaxHighlighter
{
public:
    [[nodiscard]] AttributedString highlightCode(const QString &code,
                                                 const std::optional<QString> &language,
                                                 const TextAttributes &attributes) const override
    {
        const TokenRanges tokens = SyntaxHighlighter::tokenRanges(code, languageOf(language));
        return coloured(code, tokens, attributes, 0, code.size());
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
