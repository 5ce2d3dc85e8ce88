// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presence.h"

#include "chat/appstate.h"
#include "mainwindow.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QImageReader>
#include <QPixmap>
#include <QStandardPaths>

namespace velto::app
{

namespace
{

// Without looking at what else the picture could be, for which every decoder there is would be
// loaded.
QImage icon(const char *name)
{
    QImageReader reader(QStringLiteral(":/icons/%1.png").arg(QLatin1String(name)), "png");
    reader.setAutoDetectImageFormat(false);
    return reader.read();
}

QIcon windowIcon()
{
    QIcon all;
    for (const char *size : {"16", "32", "48", "128"})
        all.addPixmap(QPixmap::fromImage(icon(size)));
    return all;
}

platform::TrayLook trayLook()
{
    const QString name = QStringLiteral("ltd.orbax.velto-symbolic");
    const QString file = QStringLiteral("icons/hicolor/symbolic/apps/%1.svg").arg(name);
    platform::TrayLook look{.title = QStringLiteral("velto"), .iconName = {}, .pictures = {}};
    if (!QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty())
        look.iconName = name;
    for (const char *size : {"tray-22", "tray-24", "tray-32", "tray-48"})
        look.pictures.append(icon(size));
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
