// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPoint>

#include <optional>

class QQmlEngine;
class QQuickWindow;

namespace velto::chat
{
class AppState;
}

namespace velto::app
{

/// The small window with nothing but the chat, read in when it is first wanted.
class ChatWindow final : public QObject
{
    Q_OBJECT

public:
    ChatWindow(QQmlEngine &engine, chat::AppState &state);
    ~ChatWindow() override;

    /// Shows it, near `where` on the screen if given, or closes it if it shows.
    void toggle(std::optional<QPoint> where, const QByteArray &token);

private:
    [[nodiscard]] bool load();
    void moveNear(QPoint where);

    QQmlEngine &m_engine;
    chat::AppState &m_state;
    std::unique_ptr<QQuickWindow> m_window;
};

} // namespace velto::app
