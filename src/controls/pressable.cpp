// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/pressable.h"

#include <utility>

namespace velto::controls
{

Pressable::Pressable(QQuickItem *parent)
    : QQuickItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setActiveFocusOnTab(true);
}

void Pressable::mousePressEvent(QMouseEvent *event)
{
    forceActiveFocus(Qt::MouseFocusReason);
    setVisualFocus(false);
    setDown(true);
    event->accept();
}

void Pressable::mouseMoveEvent(QMouseEvent *event)
{
    setDown(contains(event->position()));
}

void Pressable::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_down || !contains(event->position()))
        return setDown(false);
    setDown(false);
    emit clicked();
}

void Pressable::mouseUngrabEvent()
{
    setDown(false);
}

void Pressable::hoverEnterEvent(QHoverEvent *)
{
    setHovered(true);
}

void Pressable::hoverLeaveEvent(QHoverEvent *)
{
    setHovered(false);
}

void Pressable::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Space:
        if (!event->isAutoRepeat()) {
            m_spaceHeld = true;
            setDown(true);
        }
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat())
            emit clicked();
        return;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        setVisualFocus(true); // it may have nowhere else to go
        event->ignore();
        return;
    default:
        event->ignore();
    }
}

void Pressable::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space)
        return event->ignore();
    if (event->isAutoRepeat() || !std::exchange(m_spaceHeld, false))
        return;
    setDown(false);
    emit clicked();
}

void Pressable::focusInEvent(QFocusEvent *event)
{
    QQuickItem::focusInEvent(event);
    setVisualFocus(event->reason() == Qt::TabFocusReason ||
                   event->reason() == Qt::BacktabFocusReason ||
                   event->reason() == Qt::ShortcutFocusReason);
}

void Pressable::focusOutEvent(QFocusEvent *event)
{
    QQuickItem::focusOutEvent(event);
    if (std::exchange(m_spaceHeld, false))
        setDown(false);
    setVisualFocus(false);
}

void Pressable::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    const bool isGone = (change == ItemEnabledHasChanged && !isEnabled()) ||
                        (change == ItemVisibleHasChanged && !isVisible());
    if (!isGone)
        return;
    m_spaceHeld = false;
    setDown(false);
    setHovered(false);
}

void Pressable::setDown(bool down)
{
    if (std::exchange(m_down, down) != down)
        emit downChanged();
}

void Pressable::setHovered(bool hovered)
{
    if (std::exchange(m_hovered, hovered) != hovered)
        emit hoveredChanged();
}

void Pressable::setVisualFocus(bool visualFocus)
{
    if (std::exchange(m_visualFocus, visualFocus) != visualFocus)
        emit visualFocusChanged();
}

} // namespace velto::controls
