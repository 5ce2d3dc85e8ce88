// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/markdown.h"

#include "controls/tokens.h"
#include "markdown/imageview/networkimageloaderkey.h"
#include "markdown/render/blockviews.h"

#include <QCursor>
#include <QElapsedTimer>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickWindow>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace velto::markdown
{

using controls::Tokens;

namespace
{

// What lies this far beyond the visible part is ready when it comes into view.
constexpr qreal readyMargin = 200;
// Heights settle in one or two rounds; a component that can't make up its mind must not hang us.
constexpr int mostRounds = 8;
// A short text is measured as a whole before it shows; a long one in pieces between frames.
constexpr std::chrono::milliseconds firstMeasuring{4};
constexpr std::chrono::milliseconds laterMeasuring{2};
constexpr int measuringPause = 12;
// A take-over that lasts longer than this holds up the frame; the next one waits so that laying
// out never takes more than a third of the time.
constexpr std::chrono::milliseconds longTakeOver{5};
constexpr int pauseFactor = 2;

std::function<bool()> until(std::chrono::milliseconds limit)
{
    QElapsedTimer clock;
    clock.start();
    return [clock, limit] { return std::chrono::milliseconds(clock.elapsed()) >= limit; };
}

EnvironmentPointer settled(const Environment &wanted)
{
    auto environment = std::make_shared<Environment>(wanted);
    environment->text.fontProperties.size = Tokens::instance().property("reading").toReal();
    environment->text.baseSize = environment->text.fontProperties.size;
    environment->theme.text().apply(environment->text);
    environment->text.baseSize = environment->text.fontProperties.scaledSize();
    return environment;
}

} // namespace

Markdown::Markdown(QQuickItem *parent)
    : QQuickItem(parent)
    , m_environment(settled(m_wanted))
    , m_scheme(Tokens::instance().isDark() ? ColorScheme::Dark : ColorScheme::Light)
    , m_root(*this, m_environment, BlockView::label(), QAccessible::NoRole)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setCursor(QCursor(Qt::IBeamCursor));
    setActiveFocusOnTab(true);
    m_wanted.lineHeight = Tokens::instance().property("readingLineHeight").toReal();
    m_wanted.imageProvider = &m_defaultImages;
    m_environment = settled(m_wanted);
    connectRows();
    connect(&Tokens::instance(), &Tokens::coloursChanged, this, &Markdown::followColours);
}

Markdown::~Markdown()
{
    m_root.remove(0, m_root.count()); // texts say farewell to the selection
}

void Markdown::setText(const QString &text)
{
    if (m_text == text)
        return;
    if (!text.startsWith(m_text)) {
        m_isAnew = true;
        m_taken = 0;
    }
    m_text = text;
    emit textChanged();
    if (isComponentComplete())
        polish();
}

void Markdown::append(const QString &text)
{
    if (text.isEmpty())
        return;
    m_text += text;
    emit textChanged();
    if (isComponentComplete())
        polish();
}

void Markdown::setContent(const MarkdownContent &content)
{
    m_text.clear();
    m_taken = 0;
    m_isAnew = false;
    m_parsed.reset();
    m_blocks.setBlocks(filtered(content.blocks, m_scheme));
    polish();
}

template<typename Value>
void Markdown::change(Value &field, const Value &value)
{
    if (field == value)
        return;
    field = value;
    resetEnvironment();
}

void Markdown::setBaseURL(const QUrl &url)
{
    change(m_wanted.baseURL, url);
}

void Markdown::setImageBaseURL(const QUrl &url)
{
    change(m_wanted.imageBaseURL, url);
}

void Markdown::setTheme(const Theme &theme)
{
    m_wanted.theme = theme;
    resetEnvironment();
}

void Markdown::setImageProvider(ImageProvider *provider)
{
    change(m_wanted.imageProvider,
           QPointer<ImageProvider>(provider != nullptr ? provider : &m_defaultImages));
}

void Markdown::setInlineImageProvider(std::shared_ptr<InlineImageProvider> provider)
{
    change(m_wanted.inlineImageProvider, provider);
}

void Markdown::setCodeSyntaxHighlighter(std::shared_ptr<const CodeSyntaxHighlighter> highlighter)
{
    change(m_wanted.codeSyntaxHighlighter, highlighter);
}

void Markdown::setTableStyles(const TableBorderStyle &border,
                              const TableBackgroundStyle &background)
{
    m_wanted.tableBorderStyle = border;
    m_wanted.tableBackgroundStyle = background;
    resetEnvironment();
}

bool Markdown::keepsLineBreaks() const
{
    return m_wanted.softBreakMode == SoftBreak::Mode::LineBreak;
}

void Markdown::setKeepsLineBreaks(bool keeps)
{
    change(m_wanted.softBreakMode, keeps ? SoftBreak::Mode::LineBreak : SoftBreak::Mode::Space);
}

void Markdown::setLineHeight(qreal height)
{
    change(m_wanted.lineHeight, height);
}

void Markdown::resetEnvironment()
{
    m_environment = settled(m_wanted);
    m_root.remove(0, m_root.count());
    for (const BlockNode &block : m_blocks.blocks())
        m_root.append(makeBox(*this, m_environment, block));
    emit environmentChanged();
    if (isComponentComplete())
        polish();
}

void Markdown::followColours()
{
    const ColorScheme scheme = Tokens::instance().isDark() ? ColorScheme::Dark : ColorScheme::Light;
    if (std::exchange(m_scheme, scheme) != scheme && !m_text.isEmpty()) {
        m_hidesPictures = false;
        m_blocks.setBlocks(shown(m_parsed.content().blocks, 0));
    }
    m_root.repaint();
    if (m_caret)
        m_caret->update();
    polish();
}

void Markdown::connectRows()
{
    connect(&m_blocks, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex &, int first, int last) {
                for (int row = first; row <= last; ++row)
                    m_root.insert(row, makeBox(*this, m_environment, m_blocks.blocks()[row]));
            });
    connect(&m_blocks, &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex &, int first, int last) {
                m_root.remove(first, last - first + 1);
            });
    connect(&m_blocks, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &from, const QModelIndex &to) {
                for (int row = from.row(); row <= to.row(); ++row) {
                    if (!m_root.at(row).take(m_blocks.blocks()[row]))
                        m_root.replace(row, makeBox(*this, m_environment, m_blocks.blocks()[row]));
                }
            });
}

void Markdown::componentComplete()
{
    QQuickItem::componentComplete();
    followAncestors();
    takeOver(); // a list needs to know how tall its rows are
    m_root.layOut(width());
    (void)m_root.measure(until(firstMeasuring));
    m_root.layOut(width());
    setImplicitHeight(m_root.size().height());
    polish();
}

void Markdown::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemParentHasChanged)
        followAncestors();
    else if (change == ItemVisibleHasChanged && data.boolValue)
        polish();
    else if (change == ItemDevicePixelRatioHasChanged)
        m_root.repaint();
}

// What is visible changes with the geometry of everything around.
void Markdown::followAncestors()
{
    for (const QMetaObject::Connection &connection : std::as_const(m_following))
        disconnect(connection);
    m_following.clear();
    for (QQuickItem *item = this; item != nullptr; item = item->parentItem()) {
        m_following.append(connect(item, &QQuickItem::xChanged, this, &QQuickItem::polish));
        m_following.append(connect(item, &QQuickItem::yChanged, this, &QQuickItem::polish));
        if (item == this)
            continue;
        m_following.append(connect(item, &QQuickItem::heightChanged, this, &QQuickItem::polish));
        m_following.append(
            connect(item, &QQuickItem::parentChanged, this, &Markdown::followAncestors));
    }
    polish();
}

void Markdown::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size() && isComponentComplete())
        polish();
}

QRectF Markdown::visiblePart() const
{
    const QQuickItem *viewport = viewportItem();
    if (viewport == nullptr || viewport == this)
        return {};
    const QRectF seen = viewport->mapRectToItem(this, QRectF(QPointF(), viewport->size()));
    return seen.adjusted(0, -readyMargin, 0, readyMargin);
}

bool Markdown::mayBeSeen() const
{
    if (!isVisible() || window() == nullptr)
        return false;
    const QRectF seen = visiblePart();
    return seen.top() <= height() && seen.bottom() >= 0;
}

void Markdown::updatePolish()
{
    if (!mayBeSeen()) {
        m_root.hide();
        return;
    }
    QElapsedTimer clock;
    clock.start();
    const bool grows = m_taken != m_text.size() || m_isAnew;
    m_anchor = findAnchor();
    if (grows && !m_pause.isActive())
        takeOver();
    layOutAll();
    if (grows && std::chrono::milliseconds(clock.elapsed()) > longTakeOver)
        m_pause.start(static_cast<int>(clock.elapsed()) * pauseFactor, this);
    m_selection.settle();
    placeCaret();
}

void Markdown::takeOver()
{
    if (!m_isAnew && m_taken == m_text.size())
        return;
    if (std::exchange(m_isAnew, false)) {
        m_hidesPictures = false;
        m_parsed.reset(m_text);
    } else {
        emit growing();
        m_parsed.append(QStringView(m_text).sliced(m_taken));
    }
    m_taken = m_text.size();
    const qsizetype first = m_parsed.firstChangedBlock();
    const QList<BlockNode> &blocks = m_parsed.content().blocks;
    m_blocks.setBlocks(shown(blocks, first), first);
}

// Only what is new can be the first to have pictures for the other scheme.
QList<BlockNode> Markdown::shown(const QList<BlockNode> &blocks, qsizetype firstChanged)
{
    const qsizetype first = std::min(firstChanged, blocks.size());
    if (!m_hidesPictures && filtered(blocks.sliced(first), m_scheme) == blocks.sliced(first))
        return blocks;
    m_hidesPictures = true;
    return filtered(blocks, m_scheme);
}

void Markdown::layOutAll()
{
    const QRectF visible = visiblePart();
    for (int round = 0; round < mostRounds; ++round) {
        m_root.layOut(width());
        setImplicitHeight(m_root.size().height());
        m_root.show(visible, *this, nullptr);
        if (m_root.isValid())
            break;
    }
    keepPlace(std::exchange(m_anchor, {}));
    if (!m_measuring.isActive())
        m_measuring.start(measuringPause, this);
}

/// What scrolls this. Not always the viewport, which is what clips this.
QQuickItem *Markdown::scroller() const
{
    QQuickItem *item = parentItem();
    while (item != nullptr && item->metaObject()->indexOfProperty("contentY") < 0)
        item = item->parentItem();
    return item;
}

Markdown::Anchor Markdown::findAnchor()
{
    const QQuickItem *scroller = this->scroller();
    const qreal top = scroller != nullptr ? scroller->mapToItem(this, QPointF()).y() : 0;
    if (top <= 0 || !m_root.isPlaced() || m_root.item() == nullptr)
        return {};
    TextBox *text = m_root.textNear({0, top});
    return {text, text != nullptr ? text->toOutermost({}).y() : 0};
}

void Markdown::keepPlace(const Anchor &anchor)
{
    if (anchor.text == nullptr)
        return;
    const qreal moved = anchor.text->toOutermost({}).y() - anchor.y;
    QQuickItem *scroller = this->scroller();
    if (moved != 0 && scroller != nullptr)
        scroller->setProperty("contentY", scroller->property("contentY").toReal() + moved);
}

void Markdown::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_measuring.timerId()) {
        measureMore();
    } else if (event->timerId() == m_pause.timerId()) {
        m_pause.stop();
        polish();
    } else {
        QQuickItem::timerEvent(event);
    }
}

void Markdown::measureMore()
{
    if (!m_root.isValid()) // laid out before long, which starts this again
        return m_measuring.stop();
    if (m_root.measure(until(laterMeasuring)))
        m_measuring.stop();
    if (!m_root.isValid())
        polish();
}

void Markdown::forget(const TextBox &text)
{
    m_selection.forget(text);
    if (m_anchor.text == &text)
        m_anchor = {};
}

QImage Markdown::inlineImage(const QString &source, const QString &label)
{
    std::shared_ptr<InlineImageProvider> provider = m_wanted.inlineImageProvider;
    if (NetworkImageLoader *loader = provider ? nullptr : NetworkImageLoaderKey::loader(this))
        provider = std::make_shared<DefaultInlineImageProvider>(loader);
    if (provider && !m_inlineImages.contains(source) && !m_loading.contains(source)) {
        m_loading.insert(source);
        loadInline(this, provider, source, m_environment->resolvedImage(source), label);
    }
    return m_inlineImages.value(source);
}

QCoro::Task<void> Markdown::loadInline(QPointer<Markdown> self,
                                       std::shared_ptr<InlineImageProvider> provider,
                                       QString source, QUrl url, QString label)
{
    QCoro::Task<base::Result<QImage>> loading = provider->image(url, label);
    const base::Result<QImage> loaded = co_await std::move(loading);
    if (self == nullptr || !loaded)
        co_return; // the alternative text stays
    self->m_inlineImages.insert(source, *loaded);
    self->m_root.takeImages();
    self->polish();
}

QQuickItem *Markdown::makeComponent(const QUrl &url, const QVariantMap &properties,
                                    QQuickItem *parent)
{
    QQmlEngine *engine = qmlEngine(this);
    if (engine == nullptr)
        return nullptr;
    std::unique_ptr<QQmlComponent> &component = m_components[url];
    if (!component)
        component = std::make_unique<QQmlComponent>(engine, url);
    auto *made = qobject_cast<QQuickItem *>(
        component->createWithInitialProperties(properties, qmlContext(this)));
    if (made == nullptr) {
        qWarning("no block view from %s: %s", qUtf8Printable(url.toString()),
                 qUtf8Printable(component->errorString()));
        return nullptr;
    }
    made->setParentItem(parent);
    return made;
}

void Markdown::open(const QUrl &link)
{
    if (!link.isEmpty())
        emit linkActivated(link);
}

void Markdown::reveal(const QQuickItem &item, const QRectF &part)
{
    QQuickItem *scroller = this->scroller();
    if (scroller == nullptr)
        return;
    constexpr qreal air = 24;
    const QRectF seen = item.mapRectToItem(scroller, part);
    qreal by = 0;
    if (seen.bottom() + air > scroller->height())
        by = seen.bottom() + air - scroller->height();
    if (seen.top() - air - by < 0)
        by = seen.top() - air;
    if (by != 0)
        scroller->setProperty("contentY", scroller->property("contentY").toReal() + by);
}

} // namespace velto::markdown
