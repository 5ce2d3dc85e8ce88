// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/imageview/networkimageloaderkey.h"

#include "markdown/images/networkimageloader.h"

#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QVariant>

namespace velto::markdown
{
namespace
{

constexpr auto slot = "_velto_imageLoader";

const QObject *parentOf(const QObject *object)
{
    const auto *item = qobject_cast<const QQuickItem *>(object);
    if (item != nullptr && item->parentItem() != nullptr)
        return item->parentItem();
    return object->parent();
}

} // namespace

void NetworkImageLoaderKey::setLoader(QQmlEngine &engine, NetworkImageLoader *loader)
{
    engine.setProperty(slot, QVariant::fromValue(QPointer(loader)));
}

NetworkImageLoader *NetworkImageLoaderKey::loader(const QObject *object)
{
    for (; object != nullptr; object = parentOf(object)) {
        if (const QQmlEngine *engine = qmlEngine(object))
            return engine->property(slot).value<QPointer<NetworkImageLoader>>();
    }
    return nullptr;
}

} // namespace velto::markdown
