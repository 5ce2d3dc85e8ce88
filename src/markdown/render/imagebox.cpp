// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/imagebox.h"

#include "markdown/render/blockitem.h"
#include "markdown/render/blockviews.h"
#include "markdown/render/linkitem.h"

#include <QCursor>
#include <QMouseEvent>

#include <utility>

namespace velto::markdown
{

namespace
{

constexpr FlowLayout flowLayout{6, 6};
// Until a picture says how large it is.
constexpr QSizeF unknownSize(0, 0);

/// Holds one picture; opens its link.
class PictureFrame final : public QQuickItem
{
public:
    PictureFrame(BoxHost &host, const QUrl &link)
        : m_host(host)
        , m_link(link)
    {
        if (link.isEmpty())
            return;
        setAcceptedMouseButtons(Qt::LeftButton);
        setCursor(QCursor(Qt::PointingHandCursor));
    }

protected:
    void mousePressEvent(QMouseEvent *) override {}
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (contains(event->position()))
            m_host.open(m_link);
    }

private:
    BoxHost &m_host;
    const QUrl m_link;
};

} // namespace

std::optional<ImageFlow> picturesOf(const QList<InlineNode> &nodes)
{
    if (const auto only = RawImageData::only(nodes))
        return ImageFlow{{{0, *only}}};
    return ImageFlow::of(nodes);
}

ImageBox::ImageBox(BoxHost &host, const EnvironmentPointer &environment, const BlockView &view,
                   ImageFlow flow)
    : Box(host, environment, view)
    , m_flow(std::move(flow))
{
    for (const ImageFlow::Item &item : std::as_const(m_flow.items)) {
        if (const auto *data = std::get_if<RawImageData>(&item.content))
            m_pictures.push_back({*data, unknownSize, nullptr, nullptr});
    }
}

bool ImageBox::take(const BlockNode &block)
{
    const auto *paragraph = std::get_if<blocks::Paragraph>(&block.kind);
    return paragraph != nullptr && picturesOf(paragraph->content) == m_flow;
}

qreal ImageBox::layOutContent(qreal width)
{
    QList<std::optional<QSizeF>> sizes;
    std::size_t next = 0;
    for (const ImageFlow::Item &item : std::as_const(m_flow.items)) {
        if (std::holds_alternative<ImageFlow::LineBreak>(item.content)) {
            sizes.append(std::nullopt);
            continue;
        }
        QSizeF size = m_pictures[next++].size;
        if (size.width() > width)
            size *= width / size.width();
        sizes.append(size);
    }
    const FlowLayout::Placed placed = flowLayout.place(sizes, width);
    m_places.clear();
    for (qsizetype index = 0; index < sizes.size(); ++index) {
        if (sizes[index])
            m_places.append(placed.rectangles[index].translated(contentOrigin()).toAlignedRect());
    }
    return std::ceil(placed.size.height());
}

void ImageBox::showContent(const QRectF &, QQuickItem &item)
{
    for (std::size_t index = 0; index < m_pictures.size(); ++index) {
        Picture &picture = m_pictures[index];
        if (!picture.frame)
            makePicture(picture, item);
        const QRectF place = m_places[static_cast<qsizetype>(index)];
        picture.frame->setPosition(place.topLeft());
        picture.frame->setSize(place.size());
        if (picture.image != nullptr)
            picture.image->setSize(place.size());
    }
}

void ImageBox::hideContent()
{
    for (Picture &picture : m_pictures)
        picture.frame.reset();
}

void ImageBox::makePicture(Picture &picture, QQuickItem &item)
{
    const QUrl link = picture.data.destination
                          ? environment()->baseURL.resolved(QUrl(*picture.data.destination))
                          : QUrl();
    picture.frame = std::make_unique<PictureFrame>(host(), link);
    picture.frame->setParentItem(&item);
    if (environment()->imageProvider == nullptr)
        return;
    const QUrl url = environment()->resolvedImage(picture.data.source);
    picture.image =
        environment()->imageProvider->makeImage(url, picture.data.alt, picture.frame.get());
    if (picture.image == nullptr)
        return;
    picture.image->setParentItem(picture.frame.get());
    const auto note = [this, at = &picture - m_pictures.data()] {
        noteSize(m_pictures[static_cast<std::size_t>(at)]);
    };
    QObject::connect(picture.image, &QQuickItem::implicitWidthChanged, picture.frame.get(), note);
    QObject::connect(picture.image, &QQuickItem::implicitHeightChanged, picture.frame.get(), note);
    noteSize(picture);
    if (!link.isEmpty()) {
        auto *reachable = new LinkItem(
            host(), {link, picture.data.alt, {QRectF(QPointF(), picture.frame->size())}});
        reachable->setParent(picture.frame.get());
        reachable->setParentItem(picture.frame.get());
    }
}

void ImageBox::noteSize(Picture &picture)
{
    const QSizeF wanted(picture.image->implicitWidth(), picture.image->implicitHeight());
    if (wanted.isEmpty() || wanted == picture.size)
        return;
    picture.size = wanted;
    invalidate();
    host().layOutSoon();
}

} // namespace velto::markdown
