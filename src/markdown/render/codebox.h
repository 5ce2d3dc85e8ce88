// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/sidewaysbox.h"
#include "markdown/render/textbox.h"

namespace velto::markdown
{

/// A block of code as the highlighter gives it, and a caption if the style wants one. Kept in
/// pieces of some lines, so that one that grows, or is long, costs what shows of it.
class CodeBox final : public SidewaysBox
{
public:
    CodeBox(BoxHost &host, const EnvironmentPointer &environment, const blocks::CodeBlock &code);

    [[nodiscard]] bool take(const BlockNode &block) override;
    void collectTexts(std::vector<TextBox *> &texts) override;
    [[nodiscard]] TextBox *textNear(QPointF point) override;
    void repaint() override;
    void paint(QSGNode &node, QQuickItem &item) override;

    [[nodiscard]] static CodeBlockConfiguration configuration(const blocks::CodeBlock &code);

protected:
    [[nodiscard]] qreal layOutContent(qreal width) override;
    [[nodiscard]] bool measureContent(const std::function<bool()> &isDone) override;
    [[nodiscard]] qreal innerWidth() const override { return m_innerWidth; }
    void showContent(const QRectF &visible, QQuickItem &item) override;
    void hideContent() override;
    [[nodiscard]] qreal roomAbove() const override;
    void showInner(const QRectF &visible, QQuickItem &inner) override;
    void hideInner() override;
    [[nodiscard]] bool drawsContent() const override { return view().caption().has_value(); }
    [[nodiscard]] std::optional<qreal> contentBaseline() const override;

private:
    void setCode(const blocks::CodeBlock &code);
    void setPiece(std::size_t index, const AttributedString &text);
    [[nodiscard]] QVariantMap overlayProperties() const;
    [[nodiscard]] AttributedString captionText() const;

    EnvironmentPointer m_textEnvironment;
    blocks::CodeBlock m_code;
    std::unique_ptr<QQuickItem> m_overlay;
    std::vector<std::unique_ptr<TextBox>> m_pieces;
    qreal m_innerWidth = 0;
};

/// The text in pieces of at most so many lines. No piece but the last ends in a line feed of its
/// own: it would show as an empty line.
[[nodiscard]] QList<AttributedString> linePieces(const AttributedString &text, int lines);

} // namespace velto::markdown
