// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/imageproviders.h"

#include "markdown/imageview/networkimage.h"
#include "markdown/render/blockitem.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <utility>

namespace velto::markdown
{

namespace
{

QImage asset(const QString &folder, const QUrl &url)
{
    return QImage(folder + url.fileName());
}

/// A picture that is there already.
class PictureItem final : public QQuickItem
{
public:
    PictureItem(const QImage &image, const QString &label, QQuickItem *parent)
        : QQuickItem(parent)
        , m_image(image)
    {
        setFlag(ItemHasContents);
        const QSizeF size = image.deviceIndependentSize();
        setImplicitSize(size.width(), size.height());
        describe(*this, QAccessible::Graphic, label);
    }

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *) override
    {
        auto *node = static_cast<QSGImageNode *>(old);
        if (node == nullptr) {
            node = window()->createImageNode();
            node->setOwnsTexture(true);
            node->setFiltering(QSGTexture::Linear);
            node->setTexture(window()->createTextureFromImage(m_image));
        }
        node->setRect(boundingRect());
        return node;
    }

private:
    const QImage m_image;
};

} // namespace

void DefaultImageProvider::setImageLoader(NetworkImageLoader *loader)
{
    if (m_loader == loader)
        return;
    m_loader = loader;
    emit imageLoaderChanged();
}

QQuickItem *DefaultImageProvider::makeImage(const QUrl &url, const QString &label,
                                            QQuickItem *parent)
{
    auto *image = new NetworkImage(parent);
    if (m_loader != nullptr)
        image->setImageLoader(m_loader);
    image->setAlt(label);
    image->setUrl(url);
    return image;
}

AssetImageProvider::AssetImageProvider(QString folder, QObject *parent)
    : ImageProvider(parent)
    , m_folder(std::move(folder))
{}

QQuickItem *AssetImageProvider::makeImage(const QUrl &url, const QString &label, QQuickItem *parent)
{
    const QImage image = asset(m_folder, url);
    return image.isNull() ? nullptr : new PictureItem(image, label, parent);
}

AnyImageProvider::AnyImageProvider(MakeImage make, QObject *parent)
    : ImageProvider(parent)
    , m_make(std::move(make))
{}

DefaultInlineImageProvider::DefaultInlineImageProvider(NetworkImageLoader *loader)
    : m_loader(loader)
{}

QCoro::Task<base::Result<QImage>> DefaultInlineImageProvider::image(QUrl url, QString)
{
    if (m_loader == nullptr)
        co_return base::fail(base::TransportError{base::TransportError::Kind::Cancelled, {}});
    QCoro::Task<base::Result<QImage>> loading = m_loader->image(url);
    co_return co_await std::move(loading);
}

AssetInlineImageProvider::AssetInlineImageProvider(QString folder)
    : m_folder(std::move(folder))
{}

QCoro::Task<base::Result<QImage>> AssetInlineImageProvider::image(QUrl url, QString)
{
    const QImage image = asset(m_folder, url);
    if (image.isNull())
        co_return base::fail(
            base::TransportError{base::TransportError::Kind::BadURL, url.toString()});
    co_return image;
}

} // namespace velto::markdown
