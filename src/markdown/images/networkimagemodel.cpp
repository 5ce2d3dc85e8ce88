// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/images/networkimagemodel.h"

namespace velto::markdown
{

NetworkImageModel::NetworkImageModel(QObject *parent)
    : QObject(parent)
{}

NetworkImageModel::~NetworkImageModel()
{
    cancel();
}

void NetworkImageModel::setSource(const std::optional<ImageSource> &source)
{
    if (m_source == source)
        return;
    m_source = source;
    m_isSettled = !source;
    emit sourceChanged();
    load();
}

void NetworkImageModel::setTransaction(std::chrono::milliseconds transaction)
{
    if (m_transaction == transaction)
        return;
    m_transaction = transaction;
    emit transactionChanged();
}

void NetworkImageModel::setImageLoader(NetworkImageLoader *loader)
{
    if (m_imageLoader == loader)
        return;
    m_imageLoader = loader;
    emit imageLoaderChanged();
    load();
}

void NetworkImageModel::setShown(bool isShown)
{
    if (m_isShown == isShown)
        return;
    m_isShown = isShown;
    if (isShown)
        load();
    else
        cancel();
}

void NetworkImageModel::load()
{
    cancel(); // whoever heard of a change may have begun another load
    if (m_isSettled || !m_isShown || !m_imageLoader)
        return;
    m_loading = std::stop_source();
    run(this, m_imageLoader, *m_source, m_loading.get_token());
}

void NetworkImageModel::cancel()
{
    m_loading.request_stop();
}

QCoro::Task<void> NetworkImageModel::run(QPointer<NetworkImageModel> self,
                                         NetworkImageLoader *loader, ImageSource source,
                                         std::stop_token stop)
{
    const base::Result<QImage> loaded = co_await loader->image(source.url, stop);
    if (self && !stop.stop_requested())
        self->finish(source, loaded);
}

void NetworkImageModel::finish(const ImageSource &source, const base::Result<QImage> &loaded)
{
    if (!loaded && base::isCancellation(loaded.error()))
        return; // the loader ends, which says nothing about the image
    m_isSettled = true;
    NetworkImageState image = imagestate::Failure();
    const qreal scale = source.scale > 0 ? source.scale : 1;
    if (loaded)
        image = imagestate::Success{*loaded, QSizeF(loaded->size()) / scale};
    if (m_image == image)
        return;
    m_image = image;
    emit imageChanged();
}

} // namespace velto::markdown
