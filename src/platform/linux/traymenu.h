// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/tray.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QVariantMap>

namespace velto::platform
{

/// A line of a menu on the bus: "(ia{sv}av)".
struct MenuItem
{
    int id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children;
};

/// Properties of one line: "(ia{sv})".
struct MenuItemProperties
{
    int id = 0;
    QVariantMap properties;
};

/// Something that has happened to a line: "(isvu)".
struct MenuEvent
{
    int id = 0;
    QString event;
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const MenuItem &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItem &item);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuItemProperties &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItemProperties &item);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEvent &event);

/// The menu of the tray icon, as the panel asks for it over the bus. It never changes. The root is
/// item 0, the entries are 1 and up.
class TrayMenu final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT FINAL)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT FINAL)
    Q_PROPERTY(QString Status READ status CONSTANT FINAL)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT FINAL)

public:
    TrayMenu(QList<TrayEntry> entries, QObject *parent);

    [[nodiscard]] static uint version() { return 3; }
    [[nodiscard]] static QString textDirection();
    [[nodiscard]] static QString status() { return QStringLiteral("normal"); }
    [[nodiscard]] static QStringList iconThemePath() { return {}; }

public slots:
    // Spelt as on the bus.
    uint GetLayout(int parent, int depth, const QStringList &names,
                   velto::platform::MenuItem &layout) const;
    [[nodiscard]] QList<velto::platform::MenuItemProperties>
    GetGroupProperties(const QList<int> &ids, const QStringList &names) const;
    [[nodiscard]] QDBusVariant GetProperty(int id, const QString &name) const;
    void Event(int id, const QString &event, const QDBusVariant &data, uint timestamp);
    [[nodiscard]] QList<int> EventGroup(const QList<velto::platform::MenuEvent> &events);
    [[nodiscard]] bool AboutToShow(int id) const;
    [[nodiscard]] QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &unknown) const;

signals:
    void ItemsPropertiesUpdated(const QList<velto::platform::MenuItemProperties> &updated,
                                const QList<velto::platform::MenuItemProperties> &removed);
    void LayoutUpdated(uint revision, int parent);
    void ItemActivationRequested(int id, uint timestamp);

private:
    [[nodiscard]] bool knows(int id) const { return id >= 0 && id <= m_entries.size(); }
    [[nodiscard]] QVariantMap propertiesOf(int id) const;

    QList<TrayEntry> m_entries;
};

} // namespace velto::platform

Q_DECLARE_METATYPE(velto::platform::MenuItem)
Q_DECLARE_METATYPE(velto::platform::MenuItemProperties)
Q_DECLARE_METATYPE(velto::platform::MenuEvent)
