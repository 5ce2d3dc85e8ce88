// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/mediaviews/veltomediaimageprovider.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>

namespace velto::presentation
{

QQuickItem *VeltoMediaImageProvider::makeImage(const QUrl &url, const QString &label,
                                               QQuickItem *parent)
{
    QQmlComponent *view = component(*parent);
    if (view == nullptr)
        return nullptr;
    auto *item = qobject_cast<QQuickItem *>(view->createWithInitialProperties(
        {{QStringLiteral("rawURL"), url}, {QStringLiteral("alt"), label}}));
    if (item == nullptr) {
        qWarning("no view of a picture: %s", qUtf8Printable(view->errorString()));
        return nullptr;
    }
    item->setParent(parent);
    item->setParentItem(parent);
    return item;
}

QQmlComponent *VeltoMediaImageProvider::component(const QQuickItem &parent)
{
    if (m_component)
        return m_component.get();
    QQmlEngine *engine = nullptr;
    for (const QQuickItem *item = &parent; engine == nullptr && item != nullptr;
         item = item->parentItem())
        engine = qmlEngine(item);
    if (engine != nullptr) {
        const QUrl url(QStringLiteral("qrc:/qt/qml/Velto/Presentation/MediaImageView.qml"));
        m_component = std::make_unique<QQmlComponent>(engine, url);
    }
    return m_component.get();
}

} // namespace velto::presentation
