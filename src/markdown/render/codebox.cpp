// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/codebox.h"

#include "markdown/render/blockviews.h"
#include "markdown/render/textnode.h"

#include <algorithm>
#include <cmath>

namespace velto::markdown
{

namespace
{

constexpr int linesOfPiece = 40;

} // namespace

void continueStarts(std::vector<qsizetype> &starts, QStringView text, int lines)
{
    if (starts.empty())
        starts.push_back(0);
    int inPiece = 0;
    for (qsizetype at = text.indexOf(u'\n', starts.back()); at >= 0;
         at = text.indexOf(u'\n', at + 1)) {
        if (++inPiece < lines)
            continue;
        starts.push_back(at + 1);
        inPiece = 0;
    }
}

CodeBox::CodeBox(BoxHost &host, const EnvironmentPointer &environment,
                 const blocks::CodeBlock &code)
    : SidewaysBox(host, environment, environment->theme.codeBlock()(configuration(code)))
    , m_textEnvironment(styled(environment, view()))
{
    setCode(code);
}

CodeBlockConfiguration CodeBox::configuration(const blocks::CodeBlock &code)
{
    return {code.fenceInfo, withoutFinalLineFeed(code.content), BlockView::label()};
}

bool CodeBox::take(const BlockNode &block)
{
    const auto *code = std::get_if<blocks::CodeBlock>(&block.kind);
    if (code == nullptr)
        return false;
    const BlockView view = environment()->theme.codeBlock()(configuration(*code));
    // Only a fence that isn't complete yet changes its language.
    if (!std::holds_alternative<BlockView::Label>(view.content()) ||
        view.caption().has_value() != this->view().caption().has_value())
        return false;
    setView(view);
    setCode(*code);
    return true;
}

void CodeBox::setCode(const blocks::CodeBlock &code)
{
    const QString now = withoutFinalLineFeed(code.content);
    if (!m_highlight || m_language != code.fenceInfo || !now.startsWith(m_code)) {
        m_highlight = m_textEnvironment->codeSyntaxHighlighter->highlight(code.fenceInfo,
                                                                          m_textEnvironment->text);
        m_highlight->setChanged([this](qsizetype from) { takeLook(from); });
        m_starts.clear();
    }
    m_language = code.fenceInfo;
    m_code = now;
    const qsizetype changed = m_highlight->grow(m_code);
    // The piece before the change may go on; the others stay.
    while (m_starts.size() > 1 && m_starts.back() >= changed)
        m_starts.pop_back();
    const std::size_t first = m_starts.empty() ? 0 : m_starts.size() - 1;
    continueStarts(m_starts, m_highlight->text(), linesOfPiece);
    for (std::size_t index = first; index < m_starts.size(); ++index)
        setPiece(index);
    m_pieces.resize(m_starts.size());
    if (m_overlay) {
        const QVariantMap properties = overlayProperties();
        for (auto entry = properties.cbegin(); entry != properties.cend(); ++entry)
            m_overlay->setProperty(entry.key().toLatin1().constData(), entry.value());
    }
    invalidate();
}

void CodeBox::takeLook(qsizetype from)
{
    const auto behind = std::upper_bound(m_starts.cbegin(), m_starts.cend(), from);
    for (auto index = std::max<std::ptrdiff_t>(behind - m_starts.cbegin() - 1, 0);
         index < std::ssize(m_starts); ++index)
        setPiece(static_cast<std::size_t>(index));
    invalidate();
    host().layOutSoon();
}

void CodeBox::setPiece(std::size_t index)
{
    if (index == m_pieces.size()) {
        m_pieces.push_back(std::make_unique<TextBox>(
            host(), m_textEnvironment, BlockView::label(), TextBox::Kind::Code,
            TextSetting{1, Qt::AlignLeading, !view().isScrolling()}));
        m_pieces.back()->setParent(this);
    }
    const bool isLast = index + 1 == m_starts.size();
    const qsizetype end = isLast ? m_highlight->text().size() : m_starts[index + 1] - 1;
    m_pieces[index]->setText(m_highlight->part(m_starts[index], end));
}

AttributedString CodeBox::captionText() const
{
    AttributedString text;
    if (view().caption())
        text.append(view().caption()->text, view().caption()->style.applied(environment()->text));
    return text;
}

qreal CodeBox::roomAbove() const
{
    if (!view().caption())
        return 0;
    return LaidText::singleLineHeight(captionText().runs().value(0).attributes, 1) +
           view().caption()->distance;
}

qreal CodeBox::layOutContent(qreal width)
{
    m_innerWidth = 0;
    qreal y = 0;
    for (const auto &piece : m_pieces) {
        if (view().isScrolling())
            m_innerWidth = std::max(m_innerWidth, std::ceil(piece->naturalWidth()) + 1);
        piece->layOut(view().isScrolling() ? std::max(width, m_innerWidth) : width);
        piece->setPosition({0, y});
        y += piece->size().height();
    }
    if (m_pieces.size() == 1 && m_pieces.front()->isVoid())
        y += LaidText::singleLineHeight(m_textEnvironment->text, m_textEnvironment->lineHeight);
    return y + barRoom();
}

void CodeBox::showContent(const QRectF &visible, QQuickItem &item)
{
    SidewaysBox::showContent(visible, item);
    if (view().overlay().isEmpty())
        return;
    if (!m_overlay)
        m_overlay.reset(host().makeComponent(view().overlay(), overlayProperties(), &item));
    if (!m_overlay)
        return;
    m_overlay->setPosition(backgroundRectangle().topLeft());
    m_overlay->setSize(backgroundRectangle().size());
}

void CodeBox::hideContent()
{
    m_overlay.reset();
    SidewaysBox::hideContent();
}

QVariantMap CodeBox::overlayProperties() const
{
    return {{QStringLiteral("content"), m_code},
            {QStringLiteral("language"), m_language.value_or(QString())}};
}

void CodeBox::showInner(const QRectF &visible, QQuickItem &inner)
{
    QQuickItem *previous = nullptr;
    for (const auto &piece : m_pieces) {
        const QRectF extent = piece->rectangle();
        if (extent.top() >= visible.bottom() || extent.bottom() <= visible.top() ||
            piece->isVoid()) {
            piece->hide();
            continue;
        }
        piece->show(visible.translated(-piece->position()), inner, previous);
        previous = piece->item();
    }
}

void CodeBox::hideInner()
{
    for (const auto &piece : m_pieces)
        piece->hide();
}

bool CodeBox::measureContent(const std::function<bool()> &isDone)
{
    return std::all_of(m_pieces.cbegin(), m_pieces.cend(),
                       [&](const auto &piece) { return piece->measure(isDone); });
}

void CodeBox::collectTexts(std::vector<TextBox *> &texts)
{
    for (const auto &piece : m_pieces)
        piece->collectTexts(texts);
}

TextBox *CodeBox::textNear(QPointF point)
{
    const QPointF inner = point - innerOrigin();
    TextBox *nearest = nullptr;
    for (const auto &piece : m_pieces) {
        if (nearest != nullptr && piece->position().y() > inner.y())
            break;
        TextBox *text = piece->textNear(inner - piece->position());
        nearest = text != nullptr ? text : nearest;
    }
    return nearest;
}

void CodeBox::repaint()
{
    SidewaysBox::repaint();
    for (const auto &piece : m_pieces)
        piece->repaint();
}

void CodeBox::paint(QSGNode &node, QQuickItem &item)
{
    SidewaysBox::paint(node, item);
    if (!view().caption())
        return;
    const LaidText caption(captionText(), {1, Qt::AlignLeft, false});
    const QPointF place = backgroundRectangle().topLeft() - QPointF(0, roomAbove());
    addText(node, item, caption, {place, 0, 0, {}});
}

std::optional<qreal> CodeBox::contentBaseline() const
{
    if (view().caption())
        return std::nullopt; // a list's marker stands beside the first line that it sees
    return m_pieces.empty() ? std::nullopt : m_pieces.front()->firstBaseline();
}

} // namespace velto::markdown
