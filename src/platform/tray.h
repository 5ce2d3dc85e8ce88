// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace velto::platform
{

/// One line of the tray icon's menu; without a label it is a line between two groups.
struct TrayEntry
{
    QString label;
    std::function<void()> activate;
};

struct TrayLook
{
    QString title;
    /// Of an installed icon that takes the panel's colours. Empty where none is installed.
    QString iconName;
    /// The icon in several sizes, for who finds no icon of that name.
    QList<QImage> pictures;
};

/// An icon of velto in the desktop's panel, for as long as the desktop has a place for it: one that
/// appears later gets it, too. Main thread.
class Tray : public QObject
{
    Q_OBJECT

public:
    /// Whether the icon is in sight.
    [[nodiscard]] virtual bool hasHost() const = 0;

signals:
    /// The icon was clicked; `where` on the screen, absent where the desktop doesn't say.
    void activated(std::optional<QPoint> where, const QByteArray &token);
    void hasHostChanged();
};

/// Never waits. The icon appears when the desktop has answered.
[[nodiscard]] std::unique_ptr<Tray> makeSystemTray(TrayLook look, QList<TrayEntry> menu);

} // namespace velto::platform
