// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/video/fullscreenmode.h"

#include <chrono>

namespace velto::presentation
{

FullScreenMode::FullScreenMode(QObject *parent)
    : QObject(parent)
{
    // A window manager tells of states, of former ones too, some time after they were asked for.
    m_settling.setSingleShot(true);
    m_settling.setInterval(std::chrono::milliseconds(300));
    connect(&m_settling, &QTimer::timeout, this, &FullScreenMode::followWindow);
}

FullScreenMode::~FullScreenMode()
{
    setOn(false);
}

void FullScreenMode::setWindow(QQuickWindow *window)
{
    if (m_window == window)
        return;
    setOn(false);
    if (m_window != nullptr)
        m_window->disconnect(&m_settling);
    m_window = window;
    if (window != nullptr)
        connect(window, &QWindow::visibilityChanged, &m_settling, qOverload<>(&QTimer::start));
    emit windowChanged();
}

void FullScreenMode::setOn(bool isOn)
{
    if (m_isOn == isOn || m_window == nullptr)
        return;
    m_isOn = isOn;
    if (isOn)
        m_former = m_window->visibility();
    m_window->setVisibility(isOn ? QWindow::FullScreen : m_former);
    emit isOnChanged();
}

void FullScreenMode::followWindow()
{
    if (!m_isOn || m_window == nullptr || m_window->visibility() == QWindow::FullScreen)
        return;
    m_isOn = false;
    emit isOnChanged();
}

} // namespace velto::presentation
