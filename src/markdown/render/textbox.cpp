// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/textbox.h"

#include "markdown/render/blockitem.h"
#include "markdown/render/blockviews.h"
#include "markdown/render/inlinerenderer.h"
#include "markdown/render/linkitem.h"
#include "markdown/render/textnode.h"

#include <algorithm>
#include <utility>

namespace velto::markdown
{

namespace
{

void collectImages(const QList<InlineNode> &nodes, QList<inlines::Image> &images)
{
    for (const InlineNode &node : nodes) {
        std::visit(
            [&](const auto &kind) {
                if constexpr (std::is_same_v<std::decay_t<decltype(kind)>, inlines::Image>)
                    images.append(kind);
                else if constexpr (requires { kind.children; })
                    collectImages(kind.children, images);
            },
            node.kind);
    }
}

} // namespace

TextBox::TextBox(BoxHost &host, EnvironmentPointer environment, BlockView view, Kind kind,
                 const TextSetting &setting)
    : Box(host, std::move(environment), std::move(view))
    , m_kind(kind)
    , m_setting(setting)
{}

TextBox::~TextBox()
{
    host().forget(*this);
}

bool TextBox::take(const BlockNode &block)
{
    const std::optional<InlineBlock> text = inlineBlock(block, *environment());
    if (!text || text->kind != m_kind)
        return false;
    setView(text->view);
    setNodes(text->nodes);
    return true;
}

void TextBox::setNodes(const QList<InlineNode> &nodes)
{
    m_nodes = nodes;
    QList<inlines::Image> images;
    collectImages(nodes, images);
    m_hasImages = !images.isEmpty();
    render();
}

TextAttributes TextBox::attributes() const
{
    return view().textStyle().applied(environment()->text);
}

void TextBox::render()
{
    TextInlineRenderer renderer(environment()->baseURL, InlineTextStyles::of(environment()->theme),
                                m_images, environment()->softBreakMode, attributes());
    renderer.render(m_nodes);
    setText(renderer.result());
}

void TextBox::setText(const AttributedString &text)
{
    if (m_text == text)
        return;
    const bool grows = text.length() >= m_text.length();
    m_text = text;
    if (!grows)
        host().forget(*this);
    m_naturalWidth.reset();
    m_knownWidth = -1;
    m_linksAreStale = true;
    if (m_laid)
        m_laid->update(m_text, imageSizes());
    if (auto *shown = static_cast<BlockItem *>(item())) {
        shown->redraw();
        describeItem(*shown);
    }
    invalidate();
}

QString TextBox::plainText(int from, int to) const
{
    QString text;
    int start = 0;
    for (const TextRun &run : m_text.runs()) {
        const int end = start + static_cast<int>(run.text.size());
        const int a = std::max(from, start);
        const int b = std::min(to, end);
        if (a < b && run.image.isEmpty())
            text += QStringView(run.text).mid(a - start, b - a);
        start = end;
    }
    return text;
}

QHash<QString, QSizeF> TextBox::imageSizes() const
{
    QHash<QString, QSizeF> sizes;
    for (auto image = m_images.cbegin(); image != m_images.cend(); ++image) {
        QSizeF size = image->deviceIndependentSize();
        if (contentWidth() > 0 && size.width() > contentWidth())
            size *= contentWidth() / size.width();
        sizes.insert(image.key(), size);
    }
    return sizes;
}

LaidText &TextBox::laid()
{
    if (!m_laid) {
        TextSetting setting = m_setting;
        setting.lineHeight = view().lineHeight().value_or(environment()->lineHeight);
        m_laid = std::make_unique<LaidText>(m_text, setting, imageSizes());
        m_laid->setWidth(contentWidth());
    }
    return *m_laid;
}

qreal TextBox::naturalWidth() const
{
    if (!m_naturalWidth) {
        qreal width = LaidText::measuredWidth(m_text);
        for (auto image = m_images.cbegin(); image != m_images.cend(); ++image)
            width += image->deviceIndependentSize().width();
        m_naturalWidth = width;
    }
    return *m_naturalWidth + view().padding().left() + view().padding().right();
}

bool TextBox::isOneLine(qreal width) const
{
    const QList<TextRun> &runs = m_text.runs();
    if (m_hasImages || runs.size() != 1 || runs.constFirst().text.contains(QLatin1Char('\n')))
        return false;
    if (!m_setting.wraps || m_naturalWidth)
        return !m_setting.wraps || *m_naturalWidth <= width;
    const qreal size = runs.constFirst().attributes.fontProperties.scaledSize();
    return static_cast<qreal>(runs.constFirst().text.size()) * size < width * 0.9;
}

qreal TextBox::layOutContent(qreal width)
{
    if (m_text.isEmpty())
        return 0;
    if (m_laid) {
        m_laid->setWidth(width);
        m_knownWidth = width;
        m_knownHeight = m_laid->size().height();
        m_linksAreStale = true;
        return m_knownHeight;
    }
    if (m_knownWidth == width)
        return m_knownHeight;
    TextSetting setting = m_setting;
    setting.lineHeight = view().lineHeight().value_or(environment()->lineHeight);
    if (isOneLine(width)) {
        m_knownWidth = width;
        m_knownHeight =
            LaidText::singleLineHeight(m_text.runs().constFirst().attributes, setting.lineHeight);
        return m_knownHeight;
    }
    return LaidText::guessedHeight(m_text, width, setting);
}

bool TextBox::measureContent(const std::function<bool()> &isDone)
{
    if (m_text.isEmpty() || m_laid || m_knownWidth == contentWidth())
        return true;
    if (isDone())
        return false;
    const qreal guessed = size().height() - padding().top() - padding().bottom();
    m_knownHeight = laid().size().height();
    m_knownWidth = contentWidth();
    m_laid.reset();
    if (m_knownHeight != guessed)
        invalidate();
    return true;
}

void TextBox::showContent(const QRectF &, QQuickItem &item)
{
    if (m_hasImages)
        takeImages();
    if (!std::exchange(m_isDescribed, true))
        describeItem(item);
    if (!m_laid) {
        const qreal height = laid().size().height();
        if (m_knownWidth != contentWidth() || m_knownHeight != height)
            invalidate();
        m_knownWidth = contentWidth();
        m_knownHeight = height;
        m_linksAreStale = true;
    }
    if (std::exchange(m_linksAreStale, false))
        showLinks(item);
}

void TextBox::hideContent()
{
    m_links.clear();
    m_laid.reset();
    m_linksAreStale = true;
    m_isDescribed = false;
}

void TextBox::showLinks(QQuickItem &item)
{
    const QList<Link> wanted = links();
    const bool same = std::equal(wanted.cbegin(), wanted.cend(), m_links.cbegin(), m_links.cend(),
                                 [](const Link &link, const auto &shown) {
                                     const Link &old = static_cast<const LinkItem &>(*shown).link();
                                     return old.url == link.url && old.text == link.text &&
                                            old.rectangles == link.rectangles;
                                 });
    if (same)
        return;
    m_links.clear();
    for (const Link &link : wanted) {
        m_links.push_back(std::make_unique<LinkItem>(host(), link));
        m_links.back()->setParentItem(&item);
    }
}

QList<TextBox::Link> TextBox::links()
{
    QList<Link> found;
    int start = 0;
    const QList<TextRun> &runs = m_text.runs();
    for (qsizetype at = 0; at < runs.size(); ++at) {
        const int end = start + static_cast<int>(runs[at].text.size());
        const QUrl &url = runs[at].attributes.link;
        if (!url.isEmpty()) {
            const bool continues =
                at > 0 && !found.isEmpty() && runs[at - 1].attributes.link == url;
            if (!continues)
                found.append({url, {}, {}});
            found.last().text += plainText(start, end);
            for (const QRectF &box : laid().rectangles(start, end))
                found.last().rectangles.append(box.translated(contentOrigin()));
        }
        start = end;
    }
    return found;
}

QUrl TextBox::linkAt(QPointF point)
{
    const int run = laid().runAt(toText(point));
    return run >= 0 ? m_text.runs()[run].attributes.link : QUrl();
}

void TextBox::select(int from, int to)
{
    if (from >= to)
        from = to = 0;
    if (m_selectionStart == from && m_selectionEnd == to)
        return;
    m_selectionStart = from;
    m_selectionEnd = to;
    repaint();
}

bool TextBox::isRightToLeft() const
{
    for (const TextRun &run : m_text.runs()) {
        for (const QChar c : run.text) {
            switch (c.direction()) {
            case QChar::DirL:
                return false;
            case QChar::DirR:
            case QChar::DirAL:
                return true;
            default:
                break;
            }
        }
    }
    return false;
}

void TextBox::collectTexts(std::vector<TextBox *> &texts)
{
    if (!m_text.isEmpty())
        texts.push_back(this);
}

TextBox *TextBox::textNear(QPointF)
{
    return m_text.isEmpty() ? nullptr : this;
}

QString TextBox::accessibleName() const
{
    return m_text.plainText();
}

void TextBox::describeItem(QQuickItem &item) const
{
    const auto role = m_kind == Kind::Heading ? QAccessible::Heading
                      : m_kind == Kind::Cell  ? QAccessible::Cell
                                              : QAccessible::StaticText;
    describe(item, role, accessibleName());
}

void TextBox::takeImages()
{
    if (!m_hasImages)
        return;
    QList<inlines::Image> wanted;
    collectImages(m_nodes, wanted);
    bool changed = false;
    for (const inlines::Image &image : std::as_const(wanted)) {
        const QImage loaded =
            host().inlineImage(image.source, velto::markdown::plainText(image.children));
        changed = changed || (!loaded.isNull() && !m_images.contains(image.source));
        if (!loaded.isNull())
            m_images.insert(image.source, loaded);
    }
    if (changed)
        render();
}

std::optional<qreal> TextBox::contentBaseline() const
{
    if (m_text.isEmpty())
        return std::nullopt;
    if (m_laid)
        return m_laid->firstBaseline();
    return LaidText::singleLineBaseline(m_text.runs().constFirst().attributes,
                                        view().lineHeight().value_or(environment()->lineHeight));
}

void TextBox::paint(QSGNode &node, QQuickItem &item)
{
    Box::paint(node, item);
    if (m_text.isEmpty())
        return;
    TextPainting painting{contentOrigin(), m_selectionStart, m_selectionEnd, {}};
    for (qsizetype run = 0; run < m_text.runs().size(); ++run) {
        const QString &image = m_text.runs()[run].image;
        if (!image.isEmpty())
            painting.images.append({run, m_images.value(image)});
    }
    addText(node, item, laid(), painting);
}

} // namespace velto::markdown
