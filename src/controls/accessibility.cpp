// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/accessibility.h"

#include <QtQuick/private/qaccessiblequickitem_p.h>
#include <QtQuick/private/qquickitem_p.h>

namespace velto::controls
{

namespace
{

class AccessibleItem final : public QAccessibleQuickItem
{
public:
    explicit AccessibleItem(QQuickItem *item)
        : QAccessibleQuickItem(item)
    {
        // Whoever listens keeps the state of an object until it is told of a change.
        QObject::connect(item, &QQuickItem::enabledChanged, item, [item] {
            QAccessible::State changed;
            changed.disabled = true;
            QAccessibleStateChangeEvent event(item, changed);
            QAccessible::updateAccessibility(&event);
        });
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleQuickItem::state();
        const auto *item = qobject_cast<QQuickItem *>(object());
        state.disabled = item != nullptr && !item->isEnabled();
        return state;
    }
};

QAccessibleInterface *makeInterface(const QString &className, QObject *object)
{
    auto *item = qobject_cast<QQuickItem *>(object);
    if (className != QLatin1String("QQuickItem") || item == nullptr)
        return nullptr;
    if (!QQuickItemPrivate::get(item)->isAccessible)
        return nullptr;
    return new AccessibleItem(item);
}

} // namespace

void installAccessibility()
{
    QAccessible::installFactory(makeInterface);
}

} // namespace velto::controls
