// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/statusnotifieritem.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace velto::platform
{

IconPixmap iconPixmap(const QImage &picture)
{
    const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{.width = image.width(), .height = image.height(), .pixels = {}};
    const auto lineLength = qsizetype(image.width()) * 4;
    pixmap.pixels.resize(lineLength * image.height());
    for (int y = 0; y < image.height(); ++y)
        qToBigEndian<quint32>(image.constScanLine(y), image.width(),
                              pixmap.pixels.data() + y * lineLength);
    return pixmap;
}

QDBusArgument &operator<<(QDBusArgument &argument, const IconPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, IconPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const IconToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.pictures << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, IconToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.pictures >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

StatusNotifierItem::StatusNotifierItem(TrayLook look, QObject *parent)
    : QDBusAbstractAdaptor(parent)
    , m_look(std::move(look))
{
    qDBusRegisterMetaType<velto::platform::IconPixmap>();
    qDBusRegisterMetaType<QList<velto::platform::IconPixmap>>();
    qDBusRegisterMetaType<IconToolTip>();
}

QList<IconPixmap> StatusNotifierItem::pictures() const
{
    QList<velto::platform::IconPixmap> pixmaps;
    for (const QImage &picture : m_look.pictures)
        pixmaps.append(iconPixmap(picture));
    return pixmaps;
}

IconToolTip StatusNotifierItem::toolTip() const
{
    return {.iconName = {}, .pictures = {}, .title = m_look.title, .text = {}};
}

QDBusObjectPath StatusNotifierItem::menu()
{
    return QDBusObjectPath(QStringLiteral("/MenuBar"));
}

void StatusNotifierItem::Activate(int x, int y)
{
    // A panel on Wayland knows no place on the screen and says 0, 0.
    const bool known = x != 0 || y != 0;
    emit activated(known ? std::optional(QPoint(x, y)) : std::nullopt, std::exchange(m_token, {}));
}

void StatusNotifierItem::SecondaryActivate(int x, int y)
{
    Activate(x, y);
}

void StatusNotifierItem::ContextMenu(int x, int y)
{
    Activate(x, y); // asked by panels that can't show the menu
}

void StatusNotifierItem::Scroll(int, const QString &) {}

void StatusNotifierItem::ProvideXdgActivationToken(const QString &token)
{
    m_token = token.toUtf8();
}

} // namespace velto::platform
