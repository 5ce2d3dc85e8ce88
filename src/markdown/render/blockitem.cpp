// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/blockitem.h"

#include "markdown/render/box.h"

#include <QSGNode>
#include <QtQuick/private/qquickaccessibleattached_p.h>

namespace velto::markdown
{

BlockItem::BlockItem(Box *box, bool draws)
    : m_box(box)
{
    setFlag(ItemHasContents, draws);
}

void BlockItem::redraw()
{
    if (flags().testFlag(ItemHasContents))
        update();
}

void BlockItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged)
        redraw();
}

QSGNode *BlockItem::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    delete old;
    auto *node = new QSGNode;
    paint(*node);
    return node;
}

void BlockItem::paint(QSGNode &node)
{
    m_box->paint(node, *this);
}

void describe(QQuickItem &item, QAccessible::Role role, const QString &name,
              const QString &description)
{
    auto *attached = qobject_cast<QQuickAccessibleAttached *>(
        qmlAttachedPropertiesObject<QQuickAccessibleAttached>(&item));
    if (attached == nullptr)
        return;
    attached->setRole(role);
    attached->setName(name);
    attached->setDescription(description);
}

void describeCheckable(QQuickItem &item, bool isChecked)
{
    auto *attached = qobject_cast<QQuickAccessibleAttached *>(
        qmlAttachedPropertiesObject<QQuickAccessibleAttached>(&item));
    if (attached == nullptr)
        return;
    attached->set_checkable(true);
    attached->set_checked(isChecked);
}

void placeAfter(QQuickItem &item, QQuickItem *previous)
{
    if (previous != nullptr) {
        item.stackAfter(previous);
        return;
    }
    QQuickItem *first = item.parentItem()->childItems().constFirst();
    if (first != &item)
        item.stackBefore(first);
}

} // namespace velto::markdown
