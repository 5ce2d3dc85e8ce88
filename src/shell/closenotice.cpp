// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/closenotice.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QSettings>

namespace velto::shell
{

namespace
{
constexpr QLatin1String toldKey("window/toldThatCloseKeepsRunning");
}

CloseNotice::CloseNotice(QWindow &window, std::function<bool()> staysInSight, Notify notify,
                         QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_staysInSight(std::move(staysInSight))
    , m_notify(std::move(notify))
{
    window.installEventFilter(this);
    qGuiApp->installEventFilter(this);
}

QString CloseNotice::title()
{
    return tr("velto keeps running");
}

QString CloseNotice::text()
{
    return tr("Start velto again to come back to where you were. To end it, choose Quit (Ctrl+Q).");
}

void CloseNotice::noteRead()
{
    QSettings().setValue(toldKey, true);
    m_telling = false;
    // Not from within the event that was refused, when the desktop has told at once.
    QMetaObject::invokeMethod(&m_window, &QWindow::close, Qt::QueuedConnection);
}

bool CloseNotice::eventFilter(QObject *watched, QEvent *event)
{
    // Whoever quits closes the windows first, and one that refused would keep velto from ending.
    if (event->type() == QEvent::Quit)
        m_quitting = true;
    if (event->type() != QEvent::Close || watched != &m_window || m_quitting)
        return false;
    if (QSettings().value(toldKey).toBool() || m_staysInSight())
        return false;
    event->ignore();
    if (!m_telling)
        tell();
    return true;
}

QCoro::Task<void> CloseNotice::tell()
{
    m_telling = true;
    const QPointer<CloseNotice> self(this);
    const bool told = co_await m_notify(title(), text());
    if (self.isNull())
        co_return;
    if (told)
        noteRead();
    else
        emit noteWanted();
}

} // namespace velto::shell
