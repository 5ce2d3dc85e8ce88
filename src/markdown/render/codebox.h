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
    /// The text from `from` on looks different now.
    void takeLook(qsizetype from);
    void setPiece(std::size_t index);
    [[nodiscard]] QVariantMap overlayProperties() const;
    [[nodiscard]] AttributedString captionText() const;

    EnvironmentPointer m_textEnvironment;
    std::optional<QString> m_language;
    QString m_code; ///< Without the final line feed.
    std::unique_ptr<CodeHighlight> m_highlight;
    std::vector<qsizetype> m_starts; ///< Of the pieces, in the text that shows.
    std::unique_ptr<QQuickItem> m_overlay;
    std::vector<std::unique_ptr<TextBox>> m_pieces;
    qreal m_innerWidth = 0;
};

/// Where the pieces of at most so many lines begin that `text` is shown in, of which `starts` are
/// known already. The line feed before a start belongs to no piece: it would show as an empty line.
void continueStarts(std::vector<qsizetype> &starts, QStringView text, int lines);

} // namespace velto::markdown
