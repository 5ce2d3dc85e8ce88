// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoroTask>

#include <QObject>
#include <QWindow>

#include <functional>

namespace velto::shell
{

/// Closing the main window doesn't end velto. Where no icon of it stays in sight, the user is told,
/// once and for all: by the desktop if it shows notifications, else in the window, which then
/// closes after that.
class CloseNotice final : public QObject
{
    Q_OBJECT

public:
    /// Shows a notification of the desktop; gives false when there is nobody to show it.
    using Notify = std::function<QCoro::Task<bool>(QString title, QString text)>;

    /// `staysInSight` is asked at each close of `window`.
    CloseNotice(QWindow &window, std::function<bool()> staysInSight, Notify notify,
                QObject *parent = nullptr);

    /// The user has read the note in the window: closes it.
    Q_INVOKABLE void noteRead();

    [[nodiscard]] static QString title();
    [[nodiscard]] static QString text();

signals:
    void noteWanted();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QCoro::Task<void> tell();

    QWindow &m_window;
    std::function<bool()> m_staysInSight;
    Notify m_notify;
    bool m_quitting = false;
    bool m_telling = false;
};

} // namespace velto::shell
