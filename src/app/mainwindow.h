// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QQuickWindow>
#include <QUrl>

#include <memory>

class QQmlEngine;

namespace velto::chat
{
class AppState;
}

namespace velto::shell
{
class WindowPlacement;
}

namespace velto::app
{

/// The main window through the life of the program: read in when it is first wanted, hidden by its
/// close button, shown again to whoever asks.
class MainWindow final : public QObject
{
    Q_OBJECT

public:
    /// What its content is read from.
    [[nodiscard]] static QUrl file();

    MainWindow(QQmlEngine &engine, chat::AppState &state);
    ~MainWindow() override;

    /// Makes the window, which nobody sees yet, if that is not done.
    void prepare();
    /// Starts the session and shows the window. False when it could not be read in.
    bool load();
    /// Shows the window in front of the others.
    void present(const QByteArray &token);

signals:
    void loaded(QQuickWindow *window);
    /// Its first frame has been shown, or would have been by now. Once.
    void appeared();

private:
    void follow();
    [[nodiscard]] bool fill();
    void awaitFirstFrame();
    void noteAppeared();

    QQmlEngine &m_engine;
    chat::AppState &m_state;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<shell::WindowPlacement> m_placement;
    bool m_appeared = false;
};

} // namespace velto::app
