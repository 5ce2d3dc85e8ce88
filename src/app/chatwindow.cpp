// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chatwindow.h"

#include "chat/appstate.h"
#include "platform/windowactivation.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QScreen>

#include <algorithm>

namespace velto::app
{

ChatWindow::ChatWindow(QQmlEngine &engine, chat::AppState &state)
    : m_engine(engine)
    , m_state(state)
{}

ChatWindow::~ChatWindow() = default;

void ChatWindow::toggle(std::optional<QPoint> where, const QByteArray &token)
{
    if (m_window == nullptr && !load())
        return;
    if (m_window->isVisible()) {
        m_window->close();
        return;
    }
    if (where)
        moveNear(*where);
    platform::bringForward(*m_window, token);
}

bool ChatWindow::load()
{
    QQmlComponent component(&m_engine,
                            QUrl(QStringLiteral("qrc:/qt/qml/Velto/Shell/MenuBarRoot.qml")));
    std::unique_ptr<QObject> object(component.createWithInitialProperties(
        {{QStringLiteral("appState"), QVariant::fromValue(&m_state)}}));
    if (auto *window = qobject_cast<QQuickWindow *>(object.get())) {
        (void)object.release();
        m_window.reset(window);
    }
    return m_window != nullptr;
}

// Over or under the panel that the icon is in, whose edge of the screen is the nearer one.
void ChatWindow::moveNear(QPoint where)
{
    constexpr int gap = 8;
    constexpr int frame = 32; // what a window manager puts above it, about
    const QScreen *screen = QGuiApplication::screenAt(where);
    if (screen == nullptr)
        return;
    const QRect space = screen->availableGeometry().adjusted(gap, gap, -gap, -gap);
    const bool below = where.y() < screen->geometry().center().y();
    const int x = std::clamp(where.x() - m_window->width() / 2, space.left(),
                             std::max(space.left(), space.right() - m_window->width()));
    const int y = below ? space.top() : space.bottom() - m_window->height() - frame;
    m_window->setFramePosition({x, y});
}

} // namespace velto::app
