// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/shellsettings.h"

#include <QSettings>

#include <algorithm>
#include <cmath>
#include <utility>

namespace velto::shell
{

namespace
{

constexpr QLatin1String collapsedKey("velto.sidebar.collapsed");
constexpr QLatin1String hiddenKey("sidebar/hidden");
constexpr QLatin1String widthKey("sidebar/width");

qreal bounded(qreal width)
{
    return std::clamp(width, ShellSettings::leastWidth, ShellSettings::greatestWidth);
}

} // namespace

ShellSettings::ShellSettings(QObject *parent)
    : QObject(parent)
{
    const QSettings settings;
    m_sidebarCollapsed = settings.value(collapsedKey, false).toBool();
    m_columnHidden = settings.value(hiddenKey, false).toBool();
    bool isNumber = false;
    const qreal width = settings.value(widthKey).toDouble(&isNumber);
    if (isNumber && std::isfinite(width))
        m_columnWidth = bounded(width);
}

void ShellSettings::setSidebarCollapsed(bool collapsed)
{
    if (std::exchange(m_sidebarCollapsed, collapsed) == collapsed)
        return;
    QSettings().setValue(collapsedKey, collapsed);
    emit sidebarCollapsedChanged();
}

void ShellSettings::setColumnHidden(bool hidden)
{
    if (std::exchange(m_columnHidden, hidden) == hidden)
        return;
    QSettings().setValue(hiddenKey, hidden);
    emit columnHiddenChanged();
}

void ShellSettings::setColumnWidth(qreal width)
{
    width = bounded(width);
    if (std::exchange(m_columnWidth, width) == width)
        return;
    QSettings().setValue(widthKey, width);
    emit columnWidthChanged();
}

} // namespace velto::shell
