// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/tray.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusObjectPath>

namespace velto::platform
{

/// A picture on the bus: "(iiay)", its pixels as ARGB from the highest byte to the lowest.
struct IconPixmap
{
    int width = 0;
    int height = 0;
    QByteArray pixels;

    bool operator==(const IconPixmap &) const = default;
};

/// "(sa(iiay)ss)".
struct IconToolTip
{
    QString iconName;
    QList<IconPixmap> pictures;
    QString title;
    QString text;
};

[[nodiscard]] IconPixmap iconPixmap(const QImage &picture);

QDBusArgument &operator<<(QDBusArgument &argument, const IconPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, IconPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const IconToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, IconToolTip &toolTip);

/// The icon, as panels ask for it over the bus.
class StatusNotifierItem final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT FINAL)
    Q_PROPERTY(QString Id READ id CONSTANT FINAL)
    Q_PROPERTY(QString Title READ title CONSTANT FINAL)
    Q_PROPERTY(QString Status READ status CONSTANT FINAL)
    Q_PROPERTY(int WindowId READ windowId CONSTANT FINAL)
    Q_PROPERTY(QString IconName READ iconName CONSTANT FINAL)
    Q_PROPERTY(QString IconThemePath READ none CONSTANT FINAL)
    Q_PROPERTY(QList<velto::platform::IconPixmap> IconPixmap READ pictures CONSTANT FINAL)
    Q_PROPERTY(QString OverlayIconName READ none CONSTANT FINAL)
    Q_PROPERTY(QString AttentionIconName READ none CONSTANT FINAL)
    Q_PROPERTY(velto::platform::IconToolTip ToolTip READ toolTip CONSTANT FINAL)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT FINAL)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT FINAL)

public:
    StatusNotifierItem(TrayLook look, QObject *parent);

    [[nodiscard]] static QString category() { return QStringLiteral("ApplicationStatus"); }
    [[nodiscard]] static QString id() { return QStringLiteral("velto"); }
    [[nodiscard]] QString title() const { return m_look.title; }
    [[nodiscard]] static QString status() { return QStringLiteral("Active"); }
    [[nodiscard]] static int windowId() { return 0; }
    [[nodiscard]] QString iconName() const { return m_look.iconName; }
    [[nodiscard]] static QString none() { return {}; }
    [[nodiscard]] QList<IconPixmap> pictures() const;
    [[nodiscard]] IconToolTip toolTip() const;
    [[nodiscard]] static bool itemIsMenu() { return false; }
    [[nodiscard]] static QDBusObjectPath menu();

public slots:
    // Spelt as on the bus.
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString &orientation);
    void ProvideXdgActivationToken(const QString &token);

signals:
    void NewIcon();
    void NewStatus(const QString &status);
    void NewTitle();
    void NewToolTip();

    void activated(std::optional<QPoint> where, const QByteArray &token);

private:
    TrayLook m_look;
    QByteArray m_token;
};

} // namespace velto::platform

Q_DECLARE_METATYPE(velto::platform::IconPixmap)
Q_DECLARE_METATYPE(velto::platform::IconToolTip)
