// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace velto::controls
{

/// What can be pressed: with the pointer, with Space (on release), with Return or Enter (at once).
/// Draws nothing. Our own instead of the toolkit's button, whose library takes ten milliseconds of
/// every start and two megabytes.
class Pressable : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// It is being pressed, and would click if it were let go now.
    Q_PROPERTY(bool down READ isDown NOTIFY downChanged FINAL)
    Q_PROPERTY(bool hovered READ isHovered NOTIFY hoveredChanged FINAL)
    /// It has the focus and came by it with the keyboard.
    Q_PROPERTY(bool visualFocus READ hasVisualFocus NOTIFY visualFocusChanged FINAL)

public:
    explicit Pressable(QQuickItem *parent = nullptr);

    [[nodiscard]] bool isDown() const { return m_down; }
    [[nodiscard]] bool isHovered() const { return m_hovered; }
    [[nodiscard]] bool hasVisualFocus() const { return m_visualFocus; }

signals:
    void downChanged();
    void hoveredChanged();
    void visualFocusChanged();
    void clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void hoverEnterEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void setDown(bool down);
    void setHovered(bool hovered);
    void setVisualFocus(bool visualFocus);

    bool m_down = false;
    bool m_hovered = false;
    bool m_visualFocus = false;
    bool m_spaceHeld = false;
};

} // namespace velto::controls
