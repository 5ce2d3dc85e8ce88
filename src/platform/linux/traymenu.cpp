// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/traymenu.h"

#include <QDBusMetaType>
#include <QGuiApplication>

#include <algorithm>

namespace velto::platform
{

QDBusArgument &operator<<(QDBusArgument &argument, const MenuItem &item)
{
    argument.beginStructure();
    argument << item.id << item.properties << item.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItem &item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties >> item.children;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuItemProperties &item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItemProperties &item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuEvent &event)
{
    argument.beginStructure();
    argument << event.id << event.event << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuEvent &event)
{
    argument.beginStructure();
    argument >> event.id >> event.event >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

TrayMenu::TrayMenu(QList<TrayEntry> entries, QObject *parent)
    : QDBusAbstractAdaptor(parent)
    , m_entries(std::move(entries))
{
    qDBusRegisterMetaType<MenuItem>();
    qDBusRegisterMetaType<MenuItemProperties>();
    qDBusRegisterMetaType<QList<MenuItemProperties>>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
    qDBusRegisterMetaType<QList<int>>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
}

QString TrayMenu::textDirection()
{
    return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

QVariantMap TrayMenu::propertiesOf(int id) const
{
    if (id == 0)
        return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
    const TrayEntry &entry = m_entries.at(id - 1);
    if (entry.label.isEmpty())
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    return {{QStringLiteral("label"), entry.label}};
}

uint TrayMenu::GetLayout(int parent, int depth, const QStringList &, MenuItem &layout) const
{
    constexpr uint revision = 1;
    if (!knows(parent))
        return revision;
    layout = {.id = parent, .properties = propertiesOf(parent), .children = {}};
    for (int id = 1; parent == 0 && depth != 0 && id <= m_entries.size(); ++id) {
        const MenuItem item{.id = id, .properties = propertiesOf(id), .children = {}};
        layout.children.append(QDBusVariant(QVariant::fromValue(item)));
    }
    return revision;
}

QList<MenuItemProperties> TrayMenu::GetGroupProperties(const QList<int> &ids,
                                                       const QStringList &) const
{
    QList<MenuItemProperties> found;
    if (ids.isEmpty()) {
        for (int id = 0; knows(id); ++id)
            found.append({.id = id, .properties = propertiesOf(id)});
    }
    for (const int id : ids) {
        if (knows(id))
            found.append({.id = id, .properties = propertiesOf(id)});
    }
    return found;
}

QDBusVariant TrayMenu::GetProperty(int id, const QString &name) const
{
    // The bus has no way to say that there is nothing.
    const QVariant value = knows(id) ? propertiesOf(id).value(name) : QVariant();
    return QDBusVariant(value.isValid() ? value : QString());
}

void TrayMenu::Event(int id, const QString &event, const QDBusVariant &, uint)
{
    if (event != u"clicked" || id < 1 || !knows(id))
        return;
    const auto activate = m_entries.at(id - 1).activate;
    if (activate)
        activate();
}

QList<int> TrayMenu::EventGroup(const QList<MenuEvent> &events)
{
    QList<int> unknown;
    for (const MenuEvent &event : events) {
        if (knows(event.id))
            Event(event.id, event.event, event.data, event.timestamp);
        else
            unknown.append(event.id);
    }
    return unknown;
}

bool TrayMenu::AboutToShow(int) const
{
    return false; // nothing has changed
}

QList<int> TrayMenu::AboutToShowGroup(const QList<int> &ids, QList<int> &unknown) const
{
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(unknown),
                 [this](int id) { return !knows(id); });
    return {};
}

} // namespace velto::platform
