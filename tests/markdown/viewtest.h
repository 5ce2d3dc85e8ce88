// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "controls/accessibility.h"
#include "markdown/render/markdown.h"
#include "markdown/render/textbox.h"
#include "support/coroutinetest.h"

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <gtest/gtest.h>

#include <functional>

namespace velto::markdown
{

/// A Markdown view in a window that renders without a screen.
class ViewTest : public testing::Test
{
protected:
    ViewTest()
    {
        controls::installAccessibility();
        // Items have no place for what assistive technology is told before QML has loaded them.
        QQmlComponent items(&engine);
        items.setData("import QtQuick\nItem {}", {});
        delete items.create();
        window.resize(600, 400);
        window.show();
        QCoreApplication::processEvents(); // the window learns its size
        view.setParentItem(window.contentItem());
        view.setWidth(500);
        QObject::connect(&view, &QQuickItem::implicitHeightChanged, &view,
                         [this] { view.setHeight(view.implicitHeight()); });
    }

    /// Draws a frame.
    void settle()
    {
        (void)window.grabWindow();
        ASSERT_TRUE(test::waitUntil([this] { return !view.isPausing(); }));
        (void)window.grabWindow();
    }
    void show(const char *text)
    {
        view.setText(QString::fromUtf8(text));
        settle();
    }
    template<typename Kind>
    Kind *box(qsizetype row)
    {
        return dynamic_cast<Kind *>(&view.boxes().at(row));
    }
    std::vector<TextBox *> texts()
    {
        std::vector<TextBox *> found;
        view.boxes().collectTexts(found);
        return found;
    }
    TextBox &text(std::size_t index) { return *texts().at(index); }
    QPointF placeOf(TextBox &box) { return box.toOutermost({}); }
    qreal gap(qsizetype row)
    {
        return view.boxes().at(row + 1).position().y() - view.boxes().at(row).rectangle().bottom();
    }
    static QList<QQuickItem *> itemsBelow(QQuickItem *item)
    {
        QList<QQuickItem *> found;
        for (QQuickItem *child : item->childItems())
            found += QList<QQuickItem *>{child} + itemsBelow(child);
        return found;
    }
    static QAccessibleInterface *accessible(QQuickItem *item)
    {
        return QAccessible::queryAccessibleInterface(item);
    }

    QQmlEngine engine;
    QQuickWindow window;
    Markdown view;
};

} // namespace velto::markdown
