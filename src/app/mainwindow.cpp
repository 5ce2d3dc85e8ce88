// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "mainwindow.h"

#include "chat/appstate.h"
#include "platform/windowactivation.h"
#include "startahead.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QTimer>

#include <chrono>

namespace velto::app
{

QUrl MainWindow::file()
{
    return QUrl(QStringLiteral("qrc:/qt/qml/Velto/Shell/Main.qml"));
}

MainWindow::MainWindow(QQmlEngine &engine, chat::AppState &state)
    : m_engine(engine)
    , m_state(state)
{}

bool MainWindow::load()
{
    // Ahead of the window, so that the cached conversation is in its first frame.
    m_state.startBootstrap();
    lookUpFonts();
    m_window = make();
    if (m_window == nullptr)
        return false;
    awaitFirstFrame();
    emit loaded(m_window.get());
    return true;
}

std::unique_ptr<QQuickWindow> MainWindow::make()
{
    QQmlComponent component(&m_engine, file());
    std::unique_ptr<QObject> made(component.createWithInitialProperties(
        {{QStringLiteral("appState"), QVariant::fromValue(&m_state)}}));
    auto *window = qobject_cast<QQuickWindow *>(made.get());
    if (window == nullptr) {
        qCritical("%s", qUtf8Printable(component.errorString()));
        return nullptr;
    }
    (void)made.release();
    return std::unique_ptr<QQuickWindow>(window);
}

void MainWindow::present(const QByteArray &token)
{
    if (m_window == nullptr && !load())
        return;
    platform::bringForward(*m_window, token);
}

void MainWindow::awaitFirstFrame()
{
    connect(m_window.get(), &QQuickWindow::frameSwapped, this, &MainWindow::noteAppeared,
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
