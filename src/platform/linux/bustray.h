// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/tray.h"

#include <QDBusConnection>

namespace velto::platform
{

class StatusNotifierItem;

/// The icon by way of the session bus: a watcher there knows who wants to show an icon and who
/// shows them. Each of them may come and go.
class BusTray final : public Tray
{
    Q_OBJECT

public:
    BusTray(TrayLook look, QList<TrayEntry> menu);
    ~BusTray() override;

    [[nodiscard]] bool hasHost() const override { return m_hasHost; }

private slots:
    void askForHost();

private:
    void watch();
    void registerItem();
    void setHasHost(bool hasHost);

    QDBusConnection m_bus;
    /// What the interfaces on the bus hang on.
    QObject m_itemObject;
    QObject m_menuObject;
    QString m_name;
    bool m_hasHost = false;
};

} // namespace velto::platform
