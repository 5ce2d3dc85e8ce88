// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>
#include <QWindow>
#include <QtQml/qqmlregistration.h>

namespace velto::shell
{

/// Remembers how large a window was and whether it filled the screen, across runs. Shows the window
/// once it knows. Where it stands is the window manager's business.
class WindowPlacement : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QWindow *window READ window WRITE setWindow NOTIFY windowChanged REQUIRED FINAL)

public:
    explicit WindowPlacement(QObject *parent = nullptr);
    ~WindowPlacement() override;

    [[nodiscard]] QWindow *window() const { return m_window; }
    void setWindow(QWindow *window);

    /// Gives the window its remembered size, within its minimum and the screen, and shows it.
    Q_INVOKABLE void restore();
    void save() const;

signals:
    void windowChanged();

private:
    void noteSize();

    QPointer<QWindow> m_window;
    QSize m_normalSize;
    bool m_maximized = false;
};

} // namespace velto::shell
