// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/accessibility.h"
#include "markdown/render/markdown.h"
#include "markdown/render/textbox.h"
#include "support/coroutinetest.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>

#include <gtest/gtest.h>

#include <memory>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_MarkdownPlugin)

namespace velto::markdown
{

namespace
{

const char *const scrolled = R"(
import QtQuick
import Velto.Markdown

Flickable {
    readonly property Markdown view: markdown

    contentHeight: markdown.height
    height: 400
    width: 500

    MarkdownText {
        id: markdown

        width: 500
    }
}
)";

/// A long text in a Flickable, as a reply is read.
class ScrolledTest : public testing::Test
{
protected:
    ScrolledTest()
    {
        controls::installAccessibility();
        m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&m_engine);
        component.setData(scrolled, {});
        m_scroll.reset(qobject_cast<QQuickItem *>(component.create()));
        if (!m_scroll)
            throw std::runtime_error(component.errorString().toStdString());
        m_view = qobject_cast<Markdown *>(m_scroll->property("view").value<QObject *>());
        m_window.resize(500, 400);
        m_window.show();
        QCoreApplication::processEvents();
        m_scroll->setParentItem(m_window.contentItem());
    }

    /// Paragraphs that are guessed far too tall, and some far too short.
    static QString misguessed()
    {
        QString text;
        for (int number = 0; number < 400; ++number) {
            const QString letters =
                number % 3 == 2 ? QStringLiteral("WWWW ") : QStringLiteral("il.l ");
            text += QString::number(number) + u' ' + letters.repeated(60) + QStringLiteral("\n\n");
        }
        return text;
    }
    void draw() { (void)m_window.grabWindow(); }
    [[nodiscard]] qreal contentY() const { return m_scroll->property("contentY").toReal(); }
    void scrollTo(qreal y) { m_scroll->setProperty("contentY", y); }
    /// The text at the upper edge, and where its first line is in the window.
    [[nodiscard]] TextBox *textAtEdge() { return m_view->boxes().textNear({0, contentY()}); }
    [[nodiscard]] qreal placeInWindow(TextBox *text)
    {
        return text->toOutermost({}).y() - contentY();
    }
    [[nodiscard]] bool becomesMeasured()
    {
        return test::waitUntil([this] {
            draw();
            return m_view->isMeasured();
        });
    }

    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_scroll;
    Markdown *m_view = nullptr;
};

TEST_F(ScrolledTest, WhatIsReadStaysWhileHeightsAboveBecomeKnown)
{
    m_view->setText(misguessed());
    draw();
    scrollTo(m_view->height() / 2);
    draw();
    TextBox *const read = textAtEdge();
    ASSERT_NE(read, nullptr);
    const qreal place = placeInWindow(read);
    const qreal before = contentY();
    const qreal height = m_view->height();
    ASSERT_FALSE(m_view->isMeasured());
    ASSERT_TRUE(becomesMeasured());
    EXPECT_GT(std::abs(m_view->height() - height), 500);
    EXPECT_GT(std::abs(contentY() - before), 100);
    EXPECT_NEAR(placeInWindow(read), place, 1);
    EXPECT_EQ(textAtEdge(), read);
}

TEST_F(ScrolledTest, AtTheStartNothingMoves)
{
    m_view->setText(misguessed());
    draw();
    ASSERT_TRUE(becomesMeasured());
    EXPECT_EQ(contentY(), 0);
}

TEST_F(ScrolledTest, WhatIsReadStaysWhileTheTextGrows)
{
    m_view->setText(misguessed());
    ASSERT_TRUE(becomesMeasured());
    scrollTo(3000);
    draw();
    TextBox *const read = textAtEdge();
    const qreal place = placeInWindow(read);
    for (int delta = 0; delta < 30; ++delta) {
        m_view->append(QStringLiteral("More of the text. "));
        draw();
    }
    ASSERT_TRUE(becomesMeasured());
    EXPECT_EQ(placeInWindow(read), place);
    EXPECT_EQ(contentY(), 3000);
}

TEST_F(ScrolledTest, OnlyWhatShowsOfLongCodeHasItems)
{
    m_view->setText(QStringLiteral("```\n") + QStringLiteral("a line of code\n").repeated(20000));
    draw();
    scrollTo(m_view->height() / 2);
    draw();
    std::vector<TextBox *> texts;
    m_view->boxes().collectTexts(texts);
    EXPECT_GT(texts.size(), 400U);
    const auto shown = std::count_if(texts.cbegin(), texts.cend(),
                                     [](const TextBox *text) { return text->item() != nullptr; });
    EXPECT_GE(shown, 1);
    EXPECT_LE(shown, 4);
}

} // namespace

} // namespace velto::markdown
