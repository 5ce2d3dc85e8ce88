// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QQuickItem>

namespace velto::markdown
{

class Box;

/// The item of a box that shows. Draws what the box tells it.
class BlockItem : public QQuickItem
{
    Q_OBJECT

public:
    explicit BlockItem(Box *box, bool draws);

    /// Draws anew before the next frame.
    void redraw();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    virtual void paint(QSGNode &node);
    [[nodiscard]] Box *box() const { return m_box; }

private:
    Box *const m_box; ///< Outlives the item.
};

/// Tells assistive technology about an item.
void describe(QQuickItem &item, QAccessible::Role role, const QString &name,
              const QString &description = {});
/// Says that an item is a box to tick that nobody can tick.
void describeCheckable(QQuickItem &item, bool isChecked);

/// Puts an item among its siblings right after `previous`, or first.
void placeAfter(QQuickItem &item, QQuickItem *previous);

} // namespace velto::markdown
