// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/imageview/networkimage.h"

#include "markdown/imageview/decodedimage.h"
#include "markdown/imageview/networkimageloaderkey.h"

#include <QAccessible>
#include <QPropertyAnimation>
#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuick/private/qquickaccessibleattached_p.h>

#include <algorithm>
#include <utility>

namespace velto::markdown
{

using imagestate::Success;

NetworkImage::NetworkImage(QQuickItem *parent)
    : QQuickItem(parent)
{
    m_model.setShown(window() != nullptr && isVisible());
    connect(&m_model, &NetworkImageModel::imageLoaderChanged, this,
            &NetworkImage::imageLoaderChanged);
    connect(&m_model, &NetworkImageModel::transactionChanged, this,
            &NetworkImage::transactionChanged);
    connect(&m_model, &NetworkImageModel::imageChanged, this, [this] {
        showContent();
        emit imageChanged();
    });
    connect(this, &NetworkImage::contentChanged, this, &NetworkImage::showContent);
    describe();
}

NetworkImage::~NetworkImage()
{
    disconnect(&m_model, nullptr, this, nullptr);
}

void NetworkImage::setSource(const std::optional<ImageSource> &source)
{
    if (m_source == source)
        return;
    m_source = source;
    if (source)
        m_imageScale = source->scale;
    emit sourceChanged();
    start();
}

QUrl NetworkImage::url() const
{
    return m_source ? m_source->url : QUrl();
}

void NetworkImage::setUrl(const QUrl &url)
{
    setSource(url.isEmpty() ? std::nullopt : std::optional(ImageSource{url, m_imageScale}));
}

void NetworkImage::setImageScale(qreal scale)
{
    if (m_imageScale == scale)
        return;
    m_imageScale = scale;
    if (m_source)
        setSource(ImageSource{m_source->url, scale});
    else
        emit sourceChanged();
}

void NetworkImage::setAlt(const QString &alt)
{
    if (m_alt == alt)
        return;
    m_alt = alt;
    describe();
    emit altChanged();
}

void NetworkImage::setImageLoader(NetworkImageLoader *loader)
{
    m_model.setImageLoader(loader);
}

int NetworkImage::transaction() const
{
    return static_cast<int>(m_model.transaction().count());
}

void NetworkImage::setTransaction(int milliseconds)
{
    m_model.setTransaction(std::chrono::milliseconds(milliseconds));
}

NetworkImage::Status NetworkImage::status() const
{
    return static_cast<Status>(m_model.image().index());
}

QImage NetworkImage::image() const
{
    const auto *success = std::get_if<Success>(&m_model.image());
    return success != nullptr ? success->image : QImage();
}

QSizeF NetworkImage::idealSize() const
{
    const auto *success = std::get_if<Success>(&m_model.image());
    return success != nullptr ? success->idealSize : QSizeF();
}

void NetworkImage::componentComplete()
{
    QQuickItem::componentComplete();
    showContent();
    start();
}

void NetworkImage::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (m_content)
        m_content->setSize(newGeometry.size());
    if (newGeometry.width() != oldGeometry.width())
        measure();
}

void NetworkImage::itemChange(ItemChange change, const ItemChangeData &value)
{
    QQuickItem::itemChange(change, value);
    if (change == ItemSceneChange)
        m_model.setShown(value.window != nullptr && isVisible());
    else if (change == ItemVisibleHasChanged)
        m_model.setShown(window() != nullptr && value.boolValue);
    if (change == ItemSceneChange && value.window != nullptr)
        start();
}

void NetworkImage::start()
{
    if (!isComponentComplete())
        return;
    if (m_model.imageLoader() == nullptr && window() != nullptr)
        m_model.setImageLoader(NetworkImageLoaderKey::loader(this));
    m_model.setSource(m_source);
}

void NetworkImage::describe()
{
    auto *accessible = static_cast<QQuickAccessibleAttached *>(
        qmlAttachedPropertiesObject<QQuickAccessibleAttached>(this));
    accessible->setRole(QAccessible::Graphic);
    accessible->setName(m_alt);
    accessible->setIgnored(m_alt.isEmpty());
}

void NetworkImage::showContent()
{
    if (!isComponentComplete())
        return;
    auto *plain = qobject_cast<DecodedImage *>(m_content);
    if (plain != nullptr && status() == Status::Success && m_success == nullptr) {
        plain->setImage(image()); // keeps the old picture until the new one is ready to be drawn
        measure();
        return;
    }
    if (m_content) {
        m_content->setParentItem(nullptr);
        m_content->deleteLater();
    }
    m_content = makeContent();
    if (m_content) {
        m_content->setSize(size());
        connect(m_content, &QQuickItem::implicitWidthChanged, this, &NetworkImage::measure);
        connect(m_content, &QQuickItem::implicitHeightChanged, this, &NetworkImage::measure);
        if (transaction() > 0) {
            auto *appearing = new QPropertyAnimation(m_content, "opacity", m_content);
            appearing->setStartValue(0.0);
            appearing->setEndValue(m_content->opacity());
            appearing->setDuration(transaction());
            appearing->start(QAbstractAnimation::DeleteWhenStopped);
        }
    }
    measure();
}

QQuickItem *NetworkImage::makeContent()
{
    switch (status()) {
    case Status::Empty:
        return make(m_placeholder);
    case Status::Failure:
        return make(m_failure);
    case Status::Success:
        break;
    }
    if (m_success != nullptr)
        return make(m_success);
    auto *picture = new DecodedImage(this);
    picture->setImage(image());
    return picture;
}

QQuickItem *NetworkImage::make(QQmlComponent *component)
{
    if (component == nullptr)
        return nullptr;
    QQmlContext *context = component->creationContext();
    QObject *object = component->beginCreate(context != nullptr ? context : qmlContext(this));
    auto *item = qobject_cast<QQuickItem *>(object);
    if (item != nullptr) {
        item->setParent(this);
        item->setParentItem(this);
    }
    component->completeCreate();
    if (item == nullptr)
        delete object;
    return item;
}

void NetworkImage::measure()
{
    const QSizeF ideal = idealSize();
    if (ideal.isEmpty() || m_success != nullptr) {
        setImplicitSize(m_content ? m_content->implicitWidth() : 0,
                        m_content ? m_content->implicitHeight() : 0);
        return;
    }
    setImplicitWidth(ideal.width());
    setImplicitHeight(ideal.height() * std::min(width() / ideal.width(), 1.0));
}

} // namespace velto::markdown
