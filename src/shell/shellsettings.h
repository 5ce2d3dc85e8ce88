// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velto::shell
{

/// What the shell remembers from one start to the next. Written at once.
class ShellSettings final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Which of two titles the sidebar's command has; the column doesn't follow it.
    Q_PROPERTY(bool sidebarCollapsed READ isSidebarCollapsed WRITE setSidebarCollapsed NOTIFY
                   sidebarCollapsedChanged FINAL)
    /// Whether the user has put the sidebar's column away.
    Q_PROPERTY(bool columnHidden READ isColumnHidden WRITE setColumnHidden NOTIFY
                   columnHiddenChanged FINAL)
    /// Of the sidebar's column, in device-independent pixels, within its bounds.
    Q_PROPERTY(
        qreal columnWidth READ columnWidth WRITE setColumnWidth NOTIFY columnWidthChanged FINAL)

public:
    static constexpr qreal leastWidth = 200;
    static constexpr qreal idealWidth = 220;
    static constexpr qreal greatestWidth = 280;

    explicit ShellSettings(QObject *parent = nullptr);

    [[nodiscard]] bool isSidebarCollapsed() const { return m_sidebarCollapsed; }
    [[nodiscard]] bool isColumnHidden() const { return m_columnHidden; }
    [[nodiscard]] qreal columnWidth() const { return m_columnWidth; }

    void setSidebarCollapsed(bool collapsed);
    void setColumnHidden(bool hidden);
    void setColumnWidth(qreal width);

signals:
    void sidebarCollapsedChanged();
    void columnHiddenChanged();
    void columnWidthChanged();

private:
    bool m_sidebarCollapsed = false;
    bool m_columnHidden = false;
    qreal m_columnWidth = idealWidth;
};

} // namespace velto::shell
