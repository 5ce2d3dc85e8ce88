// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/box.h"
#include "markdown/render/laidtext.h"

#include <QHash>
#include <QImage>

namespace velto::markdown
{

/// A paragraph, heading, piece of code or table cell.
class TextBox final : public Box
{
public:
    enum class Kind { Paragraph, Heading, Html, Cell, Code, Caption };

    TextBox(BoxHost &host, EnvironmentPointer environment, BlockView view, Kind kind,
            const TextSetting &setting);
    ~TextBox() override;

    [[nodiscard]] bool take(const BlockNode &block) override;
    void setNodes(const QList<InlineNode> &nodes);
    void setText(const AttributedString &text);
    /// The row of a table that it stands in.
    void setGridRow(int row) { m_gridRow = row; }
    [[nodiscard]] std::optional<int> gridRow() const { return m_gridRow; }

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] const AttributedString &text() const { return m_text; }
    /// The text as it is copied: pictures by what they show.
    [[nodiscard]] QString plainText(int from, int to) const;
    [[nodiscard]] int length() const { return static_cast<int>(m_text.length()); }
    /// Width of the widest line when none is broken, padding included.
    [[nodiscard]] qreal naturalWidth() const;
    /// Laid out, whether it shows or not.
    [[nodiscard]] LaidText &laid();
    /// Points of the box to points of the text.
    [[nodiscard]] QPointF toText(QPointF point) const { return point - contentOrigin(); }
    [[nodiscard]] QUrl linkAt(QPointF point);
    /// Where the run's link is, in the box's coordinates; all runs of one link together.
    struct Link
    {
        QUrl url;
        QString text;
        QList<QRectF> rectangles;
    };
    [[nodiscard]] QList<Link> links();

    /// An empty stretch selects nothing.
    void select(int from, int to);
    [[nodiscard]] int selectionStart() const { return m_selectionStart; }
    [[nodiscard]] int selectionEnd() const { return m_selectionEnd; }

    [[nodiscard]] bool isVoid() const override { return m_text.isEmpty(); }
    [[nodiscard]] bool isRightToLeft() const override;
    void collectTexts(std::vector<TextBox *> &texts) override;
    [[nodiscard]] TextBox *textNear(QPointF point) override;
    [[nodiscard]] QString accessibleName() const override;
    void takeImages() override;
    void paint(QSGNode &node, QQuickItem &item) override;

protected:
    [[nodiscard]] qreal layOutContent(qreal width) override;
    [[nodiscard]] bool measureContent(const std::function<bool()> &isDone) override;
    void showContent(const QRectF &visible, QQuickItem &item) override;
    void hideContent() override;
    [[nodiscard]] bool drawsContent() const override { return true; }
    [[nodiscard]] std::optional<qreal> contentBaseline() const override;

private:
    void render();
    [[nodiscard]] QHash<QString, QSizeF> imageSizes() const;
    [[nodiscard]] TextAttributes attributes() const;
    [[nodiscard]] bool isOneLine(qreal width) const;
    void showLinks(QQuickItem &item);
    void describeItem(QQuickItem &item) const;

    const Kind m_kind;
    TextSetting m_setting;
    QList<InlineNode> m_nodes;
    AttributedString m_text;
    QHash<QString, QImage> m_images;
    std::unique_ptr<LaidText> m_laid;
    std::vector<std::unique_ptr<QQuickItem>> m_links;
    int m_selectionStart = 0;
    int m_selectionEnd = 0;
    std::optional<int> m_gridRow;
    bool m_hasImages = false;
    bool m_linksAreStale = true;
    bool m_isDescribed = false;
    mutable std::optional<qreal> m_naturalWidth;
    qreal m_knownWidth = -1; ///< The width that `m_knownHeight` was measured for.
    qreal m_knownHeight = 0;
};

} // namespace velto::markdown
