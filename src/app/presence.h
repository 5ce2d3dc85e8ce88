// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chatwindow.h"
#include "platform/tray.h"

#include <memory>

namespace velto::app
{

class MainWindow;

/// What of velto is in sight beside its main window: the icon of its windows, the icon in the panel
/// with its menu, the small chat window behind that.
class Presence final : public QObject
{
    Q_OBJECT

public:
    Presence(QQmlEngine &engine, chat::AppState &state, MainWindow &window);
    ~Presence() override;

    /// The first frame stands: there is time for all this.
    void begin();
    /// Whether the desktop shows the icon in its panel.
    [[nodiscard]] bool isInSight() const { return m_tray != nullptr && m_tray->hasHost(); }

private:
    [[nodiscard]] QList<platform::TrayEntry> menu();

    chat::AppState &m_state;
    MainWindow &m_window;
    ChatWindow m_chat;
    std::unique_ptr<platform::Tray> m_tray;
};

} // namespace velto::app
