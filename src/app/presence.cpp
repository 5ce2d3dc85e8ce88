// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presence.h"

#include "chat/appstate.h"
#include "mainwindow.h"

#include <QGuiApplication>
#include <QIcon>
#include <QStandardPaths>

namespace velto::app
{

namespace
{

QIcon windowIcon()
{
    QIcon icon;
    for (const char *size : {"16", "32", "48", "128"})
        icon.addFile(QStringLiteral(":/icons/%1.png").arg(QLatin1String(size)));
    return icon;
}

platform::TrayLook trayLook()
{
    const QString name = QStringLiteral("ltd.orbax.velto-symbolic");
    const QString file = QStringLiteral("icons/hicolor/symbolic/apps/%1.svg").arg(name);
    platform::TrayLook look{.title = QStringLiteral("velto"), .iconName = {}, .pictures = {}};
    if (!QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty())
        look.iconName = name;
    for (const char *size : {"22", "24", "32", "48"})
        look.pictures.append(
            QImage(QStringLiteral(":/icons/tray-%1.png").arg(QLatin1String(size))));
    return look;
}

} // namespace

Presence::Presence(QQmlEngine &engine, chat::AppState &state, MainWindow &window)
    : m_state(state)
    , m_window(window)
    , m_chat(engine, state)
{}

Presence::~Presence() = default;

void Presence::begin()
{
    QGuiApplication::setWindowIcon(windowIcon());
    m_tray = platform::makeSystemTray(trayLook(), menu());
    connect(m_tray.get(), &platform::Tray::activated, &m_chat, &ChatWindow::toggle);
}

QList<platform::TrayEntry> Presence::menu()
{
    return {
        {tr("Open velto"), [this] { m_window.present({}); }},
        {tr("New Chat"),
         [this] {
             m_window.present({});
             m_state.newConversation();
             m_state.requestInputFocus();
         }},
        {},
        {tr("Quit"), &QCoreApplication::quit},
    };
}

} // namespace velto::app
