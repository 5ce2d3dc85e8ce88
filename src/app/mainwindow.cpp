// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "mainwindow.h"

#include "chat/appstate.h"
#include "controls/tokens.h"
#include "platform/windowactivation.h"
#include "shell/windowplacement.h"
#include "startahead.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTimer>

#include <chrono>

namespace velto::app
{

namespace
{
constexpr QSize usualSize(1000, 760);
constexpr QSize minimumSize(480, 480);
constexpr QSize minimumWithSignIn(480, 600);
} // namespace

QUrl MainWindow::file()
{
    return QUrl(QStringLiteral("qrc:/qt/qml/Velto/Shell/MacRoot.qml"));
}

MainWindow::MainWindow(QQmlEngine &engine, chat::AppState &state)
    : m_engine(engine)
    , m_state(state)
{}

MainWindow::~MainWindow() = default;

bool MainWindow::load()
{
    prepare();
    // The desktop needs a while to show a window. It does that while the content is read in: the
    // first frame is drawn when both are there.
    m_placement->restore();
    // Ahead of the content, so that the cached conversation is in the first frame.
    m_state.startBootstrap();
    lookUpFonts();
    if (!fill()) {
        m_placement.reset();
        m_window.reset();
        return false;
    }
    awaitFirstFrame();
    emit loaded(m_window.get());
    return true;
}

void MainWindow::prepare()
{
    if (m_window != nullptr)
        return;
    m_window = std::make_unique<QQuickWindow>();
    m_window->setTitle(tr("velto"));
    m_window->resize(usualSize);
    m_placement = std::make_unique<shell::WindowPlacement>(*m_window);
    follow();
    m_window->create();
}

void MainWindow::follow()
{
    const auto colour = [window = m_window.get()] {
        window->setColor(controls::Tokens::instance().background());
    };
    const auto minimum = [this] {
        const bool signsIn = m_state.authStatusKind() == chat::AuthStatus::Kind::LoggedOut;
        m_window->setMinimumSize(signsIn ? minimumWithSignIn : minimumSize);
    };
    connect(&controls::Tokens::instance(), &controls::Tokens::coloursChanged, m_window.get(),
            colour);
    connect(&m_state, &chat::AppState::authStatusChanged, m_window.get(), minimum);
    colour();
    minimum();
}

bool MainWindow::fill()
{
    QQmlComponent component(&m_engine, file());
    QObject *content = component.createWithInitialProperties(
        {{QStringLiteral("appState"), QVariant::fromValue(&m_state)},
         {QStringLiteral("focus"), true},
         {QStringLiteral("parent"), QVariant::fromValue(m_window->contentItem())}});
    if (content == nullptr) {
        qCritical("%s", qUtf8Printable(component.errorString()));
        return false;
    }
    content->setParent(m_window.get());
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
