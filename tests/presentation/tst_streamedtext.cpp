// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/streamedtext.h"

#include "support/coroutinetest.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextDocument>

#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_PresentationPlugin)

namespace velto::presentation
{

namespace
{

using chat::ChatMessage;
using chat::MessageListModel;

/// A message's text in a real text view in a real window.
class StreamedTextTest : public testing::Test
{
protected:
    StreamedTextTest()
    {
        window.resize(600, 400);
        window.show();
    }

    void makeView(const QString &text)
    {
        messages.append(chat::newMessage(ChatMessage::Role::Assistant, {chat::textPart(text)}));
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Velto.Presentation\nMessageText { width: 500 }",
                          QUrl(QStringLiteral("qrc:/test.qml")));
        QObject *made = component.createWithInitialProperties(
            {{QStringLiteral("messages"), QVariant::fromValue(&messages)},
             {QStringLiteral("messageRow"), 0},
             {QStringLiteral("part"), 0}});
        ASSERT_NE(made, nullptr) << qPrintable(component.errorString());
        view.reset(qobject_cast<QQuickItem *>(made));
        view->setParentItem(window.contentItem());
        document = view->property("textDocument").value<QQuickTextDocument *>()->textDocument();
        QObject::connect(document, &QTextDocument::contentsChange, document,
                         [this](int, int removed, int added) {
                             this->removed += removed;
                             this->added += added;
                             ++changes;
                         });
    }
    void stream(const QString &delta) { messages.apply(chat::event::TextDelta{delta}, 0); }
    [[nodiscard]] QString shown() const { return document->toPlainText(); }
    [[nodiscard]] bool shows(const QString &text)
    {
        return test::waitUntil([&] { return shown() == text; });
    }

    MessageListModel messages;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> view;
    QTextDocument *document = nullptr;
    int removed = 0;
    int added = 0;
    int changes = 0;
};

} // namespace

TEST_F(StreamedTextTest, showsTheTextAsSoonAsItIsMade)
{
    makeView(QStringLiteral("Hello\nthere"));
    EXPECT_EQ(shown(), QStringLiteral("Hello\nthere"));
    EXPECT_GT(view->height(), 0);
}

TEST_F(StreamedTextTest, insertsOnlyWhatIsNew)
{
    makeView(QStringLiteral("One two."));
    stream(QStringLiteral(" Three."));
    ASSERT_TRUE(shows(QStringLiteral("One two. Three.")));
    EXPECT_EQ(added, 7);
    EXPECT_EQ(removed, 0);
}

TEST_F(StreamedTextTest, takesManyDeltasOverInOneFrame)
{
    makeView(QStringLiteral("a"));
    ASSERT_TRUE(test::waitUntil([&] { return window.isExposed(); }));
    for (int i = 0; i < 1000; ++i)
        stream(QStringLiteral("b"));
    EXPECT_EQ(shown(), QStringLiteral("a"));
    ASSERT_TRUE(shows(QLatin1Char('a') + QString(1000, QLatin1Char('b'))));
    EXPECT_EQ(changes, 1);
}

TEST_F(StreamedTextTest, keepsNoCopyOfTheText)
{
    makeView(QStringLiteral("a"));
    stream(QStringLiteral("b"));
    ASSERT_TRUE(shows(QStringLiteral("ab")));
    EXPECT_TRUE(std::get<QString>(messages.at(0).parts[0].kind).isDetached());
}

TEST_F(StreamedTextTest, joinsALineEndThatArrivesInTwoPieces)
{
    makeView(QStringLiteral("a\r"));
    stream(QStringLiteral("\nb"));
    ASSERT_TRUE(shows(QStringLiteral("a\nb")));
    EXPECT_EQ(document->blockCount(), 2);
}

TEST_F(StreamedTextTest, startsAfreshWhenAnotherPartIsInItsPlace)
{
    makeView(QStringLiteral("the old text, a long one"));
    ChatMessage other = messages.at(0);
    other.parts = {chat::textPart(QStringLiteral("new"))};
    messages.setMessages({other});
    EXPECT_TRUE(shows(QStringLiteral("new")));
}

TEST_F(StreamedTextTest, survivesTheEndOfItsMessage)
{
    makeView(QStringLiteral("text"));
    stream(QStringLiteral(" more"));
    messages.truncate(0);
    QCoreApplication::processEvents();
    EXPECT_TRUE(shown().startsWith(QStringLiteral("text")));
}

TEST_F(StreamedTextTest, takesMarkupForText)
{
    const QString markup = QStringLiteral("<img src=\"http://127.0.0.1:9/x.png\"><b>bold</b>");
    makeView(markup);
    EXPECT_EQ(shown(), markup);
}

TEST_F(StreamedTextTest, reachesTheEndOfAParagraphThatIsSlowToLayOut)
{
    makeView(QStringLiteral("start "));
    QString expected = QStringLiteral("start ");
    for (int i = 0; i < 20; ++i) {
        const QString words = QStringLiteral("word ").repeated(2000);
        stream(words);
        expected += words;
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(shows(expected));
}

} // namespace velto::presentation
