// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/linkitem.h"

#include "controls/tokens.h"
#include "markdown/render/blockitem.h"
#include "markdown/render/textnode.h"

#include <QKeyEvent>
#include <QSGNode>
#include <QtQuick/private/qquickaccessibleattached_p.h>

#include <utility>

namespace velto::markdown
{

namespace
{

constexpr qreal ringDistance = 2;
constexpr qreal ringWidth = 2;

} // namespace

LinkItem::LinkItem(BoxHost &host, TextBox::Link link)
    : m_host(host)
    , m_link(std::move(link))
{
    setActiveFocusOnTab(true);
    setFlag(ItemHasContents);
    QRectF all;
    for (const QRectF &rectangle : std::as_const(m_link.rectangles))
        all |= rectangle;
    setPosition(all.topLeft());
    setSize(all.size());
    describe(*this, QAccessible::Link, m_link.text, m_link.url.toDisplayString());
    auto *accessible = qobject_cast<QQuickAccessibleAttached *>(
        qmlAttachedPropertiesObject<QQuickAccessibleAttached>(this));
    if (accessible != nullptr) // absent until QML has loaded Qt Quick
        connect(accessible, &QQuickAccessibleAttached::pressAction, this,
                [this] { m_host.open(m_link.url); });
}

void LinkItem::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return m_host.open(m_link.url);
    default:
        event->ignore();
    }
}

void LinkItem::focusInEvent(QFocusEvent *event)
{
    m_showsFocus =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (m_showsFocus)
        m_host.reveal(*this, boundingRect());
    update();
}

void LinkItem::focusOutEvent(QFocusEvent *)
{
    m_showsFocus = false;
    update();
}

QSGNode *LinkItem::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    delete old;
    if (!m_showsFocus)
        return nullptr;
    auto *node = new QSGNode;
    const QColor ring = controls::Tokens::faded(controls::Tokens::instance().accent(), 0.8);
    for (const QRectF &rectangle : std::as_const(m_link.rectangles)) {
        const QRectF around =
            rectangle.translated(-position())
                .adjusted(-ringDistance, -ringDistance, ringDistance, ringDistance);
        addRectangle(*node, *this, around, ring, ringDistance + ringWidth, ringWidth);
    }
    return node;
}

} // namespace velto::markdown
