// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace velto::shell
{

/// Keeps the rows of a list view in the order of their `index` for assistive technology, which is
/// told of them in the order in which they were made otherwise. Main thread.
class RowOrder : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// The list view.
    Q_PROPERTY(QQuickItem *view READ view WRITE setView NOTIFY viewChanged REQUIRED FINAL)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem *view() const { return m_view; }
    void setView(QQuickItem *view);

    /// To be called when a row's index has changed: sorts once, when all that happens now has.
    Q_INVOKABLE void update();

signals:
    void viewChanged();

private:
    void sort();

    QPointer<QQuickItem> m_view;
    QPointer<QQuickItem> m_content;
    bool m_isScheduled = false;
};

} // namespace velto::shell
