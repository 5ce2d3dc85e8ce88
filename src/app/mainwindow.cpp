// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "mainwindow.h"

#include "chat/appstate.h"
#include "platform/windowactivation.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTimer>

#include <chrono>

namespace velto::app
{

MainWindow::MainWindow(QQmlApplicationEngine &engine, chat::AppState &state)
    : m_engine(engine)
    , m_state(state)
{}

bool MainWindow::load()
{
    // Ahead of the window, so that the cached conversation is in its first frame.
    m_state.startBootstrap();
    m_engine.setInitialProperties({{QStringLiteral("appState"), QVariant::fromValue(&m_state)}});
    m_engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Velto/Shell/Main.qml")));
    m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().value(0));
    if (m_window == nullptr)
        return false;
    awaitFirstFrame();
    emit loaded(m_window);
    return true;
}

void MainWindow::present(const QByteArray &token)
{
    if (m_window == nullptr && !load())
        return;
    platform::bringForward(*m_window, token);
}

void MainWindow::awaitFirstFrame()
{
    connect(m_window, &QQuickWindow::frameSwapped, this, &MainWindow::noteAppeared,
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    // A window that nobody sees draws nothing; the session continues all the same.
    QTimer::singleShot(std::chrono::milliseconds(500), this, &MainWindow::noteAppeared);
}

void MainWindow::noteAppeared()
{
    if (!std::exchange(m_appeared, true))
        emit appeared();
}

} // namespace velto::app
