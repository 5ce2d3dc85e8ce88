// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// Lets a window fill the screen for a while, and puts it back as it was. Going away does so too,
/// and a window that leaves full screen by other means ends it.
class FullScreenMode : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickWindow *window READ window WRITE setWindow NOTIFY windowChanged FINAL)
    Q_PROPERTY(bool isOn READ isOn WRITE setOn NOTIFY isOnChanged FINAL)

public:
    explicit FullScreenMode(QObject *parent = nullptr);
    ~FullScreenMode() override;

    [[nodiscard]] QQuickWindow *window() const { return m_window; }
    void setWindow(QQuickWindow *window);
    [[nodiscard]] bool isOn() const { return m_isOn; }
    /// Nothing happens without a window.
    void setOn(bool isOn);
    Q_INVOKABLE void toggle() { setOn(!m_isOn); }

signals:
    void windowChanged();
    void isOnChanged();

private:
    void followWindow();

    QPointer<QQuickWindow> m_window;
    bool m_isOn = false;
    QTimer m_settling;
    QWindow::Visibility m_former = QWindow::Windowed;
};

} // namespace velto::presentation
