// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QSize>
#include <QWindow>

namespace velto::shell
{

/// Remembers how large a window was and whether it filled the screen, across runs. Shows the window
/// once it knows. Where it stands is the window manager's business.
class WindowPlacement : public QObject
{
    Q_OBJECT

public:
    explicit WindowPlacement(QWindow &window);
    ~WindowPlacement() override;

    /// Gives the window its remembered size, within its minimum and the screen, and shows it.
    void restore();
    void save() const;

private:
    void noteSize();

    QWindow &m_window;
    QSize m_normalSize;
    bool m_maximized = false;
};

} // namespace velto::shell
