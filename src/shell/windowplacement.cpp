// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/windowplacement.h"

#include <QCoreApplication>
#include <QScreen>
#include <QSettings>

namespace velto::shell
{

namespace
{
constexpr QLatin1String sizeKey("window/size");
constexpr QLatin1String maximizedKey("window/maximized");
} // namespace

WindowPlacement::WindowPlacement(QWindow &window)
    : m_window(window)
{
    connect(qApp, &QCoreApplication::aboutToQuit, this, &WindowPlacement::save);
    connect(&window, &QWindow::widthChanged, this, &WindowPlacement::noteSize);
    connect(&window, &QWindow::heightChanged, this, &WindowPlacement::noteSize);
    connect(&window, &QWindow::windowStateChanged, this, &WindowPlacement::noteSize);
    // A program without a window may run for weeks and end in any way.
    connect(&window, &QWindow::visibleChanged, this, [this](bool visible) {
        if (!visible)
            save();
    });
}

WindowPlacement::~WindowPlacement() = default;

void WindowPlacement::restore()
{
    const QSettings settings;
    const QSize size = settings.value(sizeKey).toSize();
    if (size.isValid()) {
        const QSize screen = m_window.screen()->availableSize();
        m_window.resize(size.boundedTo(screen).expandedTo(m_window.minimumSize()));
    }
    if (settings.value(maximizedKey).toBool())
        m_window.showMaximized();
    else
        m_window.show();
}

void WindowPlacement::save() const
{
    if (!m_normalSize.isValid())
        return;
    QSettings settings;
    settings.setValue(sizeKey, m_normalSize);
    settings.setValue(maximizedKey, m_maximized);
}

void WindowPlacement::noteSize()
{
    // A window that is being closed still tells its size, but no longer the state it was in.
    if (!m_window.isVisible())
        return;
    m_maximized = m_window.windowStates().testFlag(Qt::WindowMaximized);
    const bool normal = m_window.windowStates() == Qt::WindowNoState;
    if (normal)
        m_normalSize = m_window.size();
}

} // namespace velto::shell
