// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/roworder.h"

#include <QVariant>

#include <algorithm>
#include <utility>

namespace velto::shell
{

namespace
{

/// Below every row for what is none.
int indexOf(const QQuickItem *item)
{
    const QVariant index = item->property("index");
    return index.isValid() ? index.toInt() : -1;
}

} // namespace

void RowOrder::setView(QQuickItem *view)
{
    if (m_view == view)
        return;
    if (m_content != nullptr)
        m_content->disconnect(this);
    m_view = view;
    m_content = view == nullptr ? nullptr : view->property("contentItem").value<QQuickItem *>();
    if (m_content != nullptr)
        connect(m_content, &QQuickItem::childrenChanged, this, &RowOrder::update);
    emit viewChanged();
    update();
}

void RowOrder::update()
{
    if (!std::exchange(m_isScheduled, true))
        QMetaObject::invokeMethod(this, &RowOrder::sort, Qt::QueuedConnection);
}

void RowOrder::sort()
{
    m_isScheduled = false;
    if (m_content == nullptr)
        return;
    QList<QQuickItem *> rows = m_content->childItems();
    if (std::ranges::is_sorted(rows, {}, indexOf))
        return;
    std::ranges::stable_sort(rows, {}, indexOf);
    for (qsizetype at = 1; at < rows.size(); ++at)
        rows.at(at)->stackAfter(rows.at(at - 1));
}

} // namespace velto::shell
