// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/incrementalmarkdown.h"
#include "markdown/render/blocklistmodel.h"
#include "markdown/render/environment.h"
#include "markdown/render/imageproviders.h"
#include "markdown/render/imagerule.h"
#include "markdown/render/sequencebox.h"
#include "markdown/render/textselection.h"

#include <QBasicTimer>
#include <QQmlComponent>
#include <QQuickItem>
#include <QSet>

#include <map>

namespace velto::markdown
{

/// A Markdown text on the screen, as wide as it is told and as tall as it needs.
///
/// Parses at most once a frame, and only while some of it can be seen. Of a long text only what
/// shows is laid out; the heights of the rest are guessed first and measured in spare moments.
/// Opens no link and fetches no picture: it says which link was activated, and asks its image
/// providers.
class Markdown : public QQuickItem, private BoxHost
{
    Q_OBJECT
    QML_ELEMENT
    /// All of the text. Setting one that continues the former costs what it adds.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    Q_PROPERTY(QUrl baseURL READ baseURL WRITE setBaseURL NOTIFY environmentChanged FINAL)
    Q_PROPERTY(
        QUrl imageBaseURL READ imageBaseURL WRITE setImageBaseURL NOTIFY environmentChanged FINAL)
    Q_PROPERTY(
        velto::markdown::Theme theme READ theme WRITE setTheme NOTIFY environmentChanged FINAL)
    Q_PROPERTY(velto::markdown::ImageProvider *imageProvider READ imageProvider WRITE
                   setImageProvider NOTIFY environmentChanged FINAL)
    Q_PROPERTY(bool keepsLineBreaks READ keepsLineBreaks WRITE setKeepsLineBreaks NOTIFY
                   environmentChanged FINAL)
    /// Distance of lines in proportion to the font's own.
    Q_PROPERTY(qreal lineHeight READ lineHeight WRITE setLineHeight NOTIFY environmentChanged FINAL)
    /// The target of the link under the pointer; empty when there is none.
    Q_PROPERTY(QString hoveredLink READ hoveredLink NOTIFY hoveredLinkChanged FINAL)
    Q_PROPERTY(QPointF hoveredPoint READ hoveredPoint NOTIFY hoveredLinkChanged FINAL)
    Q_PROPERTY(QString selectedText READ selectedText NOTIFY selectionChanged FINAL)

public:
    explicit Markdown(QQuickItem *parent = nullptr);
    ~Markdown() override;

    [[nodiscard]] const QString &text() const { return m_text; }
    void setText(const QString &text);
    /// Continues the text.
    Q_INVOKABLE void append(const QString &text);
    /// Shows blocks that were parsed elsewhere.
    void setContent(const MarkdownContent &content);

    [[nodiscard]] QUrl baseURL() const { return m_wanted.baseURL; }
    void setBaseURL(const QUrl &url);
    [[nodiscard]] QUrl imageBaseURL() const { return m_wanted.imageBaseURL; }
    void setImageBaseURL(const QUrl &url);
    [[nodiscard]] Theme theme() const { return m_wanted.theme; }
    void setTheme(const Theme &theme);
    [[nodiscard]] ImageProvider *imageProvider() const { return m_wanted.imageProvider; }
    void setImageProvider(ImageProvider *provider);
    void setInlineImageProvider(std::shared_ptr<InlineImageProvider> provider);
    void setCodeSyntaxHighlighter(std::shared_ptr<const CodeSyntaxHighlighter> highlighter);
    void setTableStyles(const TableBorderStyle &border, const TableBackgroundStyle &background);
    [[nodiscard]] bool keepsLineBreaks() const;
    void setKeepsLineBreaks(bool keeps);
    [[nodiscard]] qreal lineHeight() const { return m_wanted.lineHeight; }
    void setLineHeight(qreal height);

    [[nodiscard]] QString hoveredLink() const { return m_hoveredLink.toDisplayString(); }
    [[nodiscard]] QPointF hoveredPoint() const { return m_hoveredPoint; }
    [[nodiscard]] QString selectedText() const { return m_selection.text(); }
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void deselect();
    Q_INVOKABLE void copy() const;

    /// The height is that of all the text, nothing is guessed any more.
    [[nodiscard]] bool isMeasured() const { return !m_measuring.isActive() && m_root.isValid(); }
    /// New text waits a moment, since the last of it took long to lay out.
    [[nodiscard]] bool isPausing() const { return m_pause.isActive(); }
    [[nodiscard]] const BlockListModel &blockModel() const { return m_blocks; }
    /// The boxes of the blocks, for those who look closely.
    [[nodiscard]] BoxSequence &boxes() { return m_root; }

signals:
    void textChanged();
    void environmentChanged();
    void hoveredLinkChanged();
    void selectionChanged();
    /// A link was pressed. Resolved against the base URL; what may be opened, others decide.
    void linkActivated(const QUrl &link);
    /// The text is about to become longer than it shows.
    void growing();

protected:
    void componentComplete() override;
    void updatePolish() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void timerEvent(QTimerEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void hoverEnterEvent(QHoverEvent *event) override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    /// What stays where it is while heights above it change.
    struct Anchor
    {
        TextBox *text = nullptr;
        qreal y = 0;
    };

    void layOutSoon() override { polish(); }
    void forget(const TextBox &text) override;
    QImage inlineImage(const QString &source, const QString &label) override;
    QQuickItem *makeComponent(const QUrl &url, const QVariantMap &properties,
                              QQuickItem *parent) override;
    void open(const QUrl &link) override;
    void reveal(const QQuickItem &item, const QRectF &part) override;

    template<typename Value>
    void change(Value &field, const Value &value);
    void resetEnvironment();
    void followColours();
    void connectRows();
    void followAncestors();
    [[nodiscard]] QRectF visiblePart() const;
    [[nodiscard]] bool mayBeSeen() const;
    void takeOver();
    [[nodiscard]] QList<BlockNode> shown(const QList<BlockNode> &blocks, qsizetype firstChanged);
    void layOutAll();
    [[nodiscard]] QQuickItem *scroller() const;
    [[nodiscard]] Anchor findAnchor();
    void keepPlace(const Anchor &anchor);
    void measureMore();
    QCoro::Task<void> loadInline(QPointer<Markdown> self,
                                 std::shared_ptr<InlineImageProvider> provider, QString source,
                                 QUrl url, QString label);

    [[nodiscard]] TextPosition positionAt(QPointF point);
    [[nodiscard]] QUrl linkAt(QPointF point);
    void hover(QPointF point);
    void setHoveredLink(const QUrl &link, QPointF point);
    [[nodiscard]] bool handleSelectionKey(QKeyEvent &event);
    void placeCaret();

    DefaultImageProvider m_defaultImages;
    Environment m_wanted;
    EnvironmentPointer m_environment;
    ColorScheme m_scheme = ColorScheme::Light;
    QString m_text;
    qsizetype m_taken = 0; ///< UTF-16 units of the text that have been parsed.
    bool m_hidesPictures = false;
    bool m_isAnew = false; ///< The text doesn't continue the former.
    IncrementalMarkdown m_parsed;
    BlockListModel m_blocks;
    BoxSequence m_root;
    TextSelection m_selection{m_root};
    Anchor m_anchor;
    QList<QMetaObject::Connection> m_following;
    QBasicTimer m_measuring;
    QBasicTimer m_pause;
    QHash<QString, QImage> m_inlineImages;
    QSet<QString> m_loading;
    std::map<QUrl, std::unique_ptr<QQmlComponent>> m_components;
    QUrl m_hoveredLink;
    QPointF m_hoveredPoint;
    QUrl m_pressedLink;
    QPointF m_pressedPoint;
    bool m_isDragging = false;
    ulong m_lastDoubleClick = 0;
    std::unique_ptr<QQuickItem> m_caret;
};

} // namespace velto::markdown
