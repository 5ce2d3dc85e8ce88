// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/video/fullscreenmode.h"

namespace velto::presentation
{

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
        m_window->disconnect(this);
    m_window = window;
    if (window != nullptr)
        connect(window, &QWindow::visibilityChanged, this, &FullScreenMode::followWindow);
    emit windowChanged();
}

void FullScreenMode::setOn(bool isOn)
{
    if (m_isOn == isOn || m_window == nullptr)
        return;
    m_isOn = isOn;
    m_hasArrived = false;
    if (isOn)
        m_former = m_window->visibility();
    m_window->setVisibility(isOn ? QWindow::FullScreen : m_former);
    emit isOnChanged();
}

// On the way there a window may pass through other states.
void FullScreenMode::followWindow(QWindow::Visibility visibility)
{
    if (!m_isOn)
        return;
    if (visibility == QWindow::FullScreen) {
        m_hasArrived = true;
    } else if (m_hasArrived) {
        m_isOn = false;
        emit isOnChanged();
    }
}

} // namespace velto::presentation
