// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/windowactivation.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <qpa/qplatformnativeinterface.h>

namespace velto::platform
{

namespace
{

// Qt hands out all of these functions under one type; the compiler takes this one for any.
template<typename Function>
Function as(void (*function)())
{
    return reinterpret_cast<Function>(function);
}

// A window manager lets a window come forward whose user was last active in it. The user was active
// elsewhere, on what led here; the server's own time stands for that.
void noteUserTime(QScreen *screen)
{
    using SetTime = void (*)(QScreen *, quint32);
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    const auto now = static_cast<quint32>(
        reinterpret_cast<quintptr>(native->nativeResourceForScreen("gettimestamp", screen)));
    for (const char *name : {"setapptime", "setappusertime"}) {
        const auto function = native->nativeResourceFunctionForScreen(name);
        if (function != nullptr)
            as<SetTime>(reinterpret_cast<void (*)()>(function))(screen, now);
    }
}

void noteStartupId(const QByteArray &token)
{
    using SetStartupId = void (*)(const char *);
    const auto function =
        QGuiApplication::platformNativeInterface()->nativeResourceFunctionForIntegration(
            "setstartupid");
    if (function != nullptr)
        as<SetStartupId>(reinterpret_cast<void (*)()>(function))(token.constData());
}

} // namespace

void bringForward(QWindow &window, const QByteArray &token)
{
    if (QGuiApplication::platformName() == u"xcb") {
        if (!token.isEmpty())
            noteStartupId(token);
        noteUserTime(window.screen());
    } else if (!token.isEmpty()) {
        qputenv("XDG_ACTIVATION_TOKEN", token); // where Qt looks for it on Wayland
    }
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    if (!window.isVisible())
        window.show();
    window.raise();
    window.requestActivate();
}

} // namespace velto::platform
