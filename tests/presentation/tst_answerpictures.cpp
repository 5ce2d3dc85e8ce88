// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/imageview/networkimage.h"
#include "markdown/imageview/networkimageloaderkey.h"
#include "markdown/pictures.h"
#include "presentation/media/mediaimageloader.h"
#include "presentation/mediaviews/roundedpicture.h"
#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include "chat/messagelistmodel.h"

#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_MarkdownPlugin)
Q_IMPORT_QML_PLUGIN(Velto_PresentationPlugin)

namespace velto::test
{

namespace
{

using chat::ChatMessage;
using chat::textPart;
using markdown::NetworkImage;

/// The list of messages in a window, with pictures from a scripted service.
class AnswerPictures : public testing::Test
{
protected:
    AnswerPictures()
    {
        view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
        markdown::NetworkImageLoaderKey::setLoader(*view.engine(), &loader);
        view.setInitialProperties({{QStringLiteral("messages"), QVariant::fromValue(&messages)}});
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.resize(900, 700);
        view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Velto/Presentation/MessageList.qml")));
        view.show();
    }

    void answer(const QString &text)
    {
        messages.setMessages({chat::newMessage(ChatMessage::Role::User, {textPart({})}),
                              chat::newMessage(ChatMessage::Role::Assistant, {textPart(text)})});
    }

    [[nodiscard]] NetworkImage *picture() const { return find<NetworkImage>(view.rootObject()); }
    [[nodiscard]] bool says(const QString &text) const
    {
        return picture() != nullptr && hasText(picture(), text);
    }

    template<typename Item>
    [[nodiscard]] static Item *find(QQuickItem *item)
    {
        if (auto *found = qobject_cast<Item *>(item))
            return found;
        for (QQuickItem *child : item->childItems()) {
            if (auto *found = find<Item>(child))
                return found;
        }
        return nullptr;
    }

    [[nodiscard]] static bool hasText(const QQuickItem *item, const QString &text)
    {
        return item->property("text").toString() == text ||
               std::ranges::any_of(item->childItems(),
                                   [&](const QQuickItem *child) { return hasText(child, text); });
    }

    ScriptedServer service;
    service::Transport transport;
    presentation::MediaImageLoader loader{transport, service.url(),
                                          [] { return std::optional(QStringLiteral("secret")); }};
    chat::MessageListModel messages;
    QQuickView view;
};

} // namespace

TEST_F(AnswerPictures, aPictureFillsTheWidthOfTheAnswer)
{
    service.on("/v1/media/some/a.png", test::answer(200, png({300, 100}, Qt::blue)));
    answer(QStringLiteral("![a](media:some/a.png)"));
    ASSERT_TRUE(waitUntil([&] {
        return picture() != nullptr && find<presentation::RoundedPicture>(picture()) != nullptr &&
               picture()->width() > 600;
    }));
    EXPECT_EQ(picture()->width(), 720 - 38);
    EXPECT_NEAR(picture()->height(), picture()->width() / 3, 1);
    EXPECT_EQ(service.requests().last().header("Authorization"), "Bearer secret");
    ASSERT_TRUE(waitUntil([&] {
        const QPointF middle = picture()->mapToScene({picture()->width() / 2, 60});
        return view.grabWindow().pixelColor(middle.toPoint()) == QColor(Qt::blue);
    }));
}

TEST_F(AnswerPictures, aPictureThatIsNotThereSaysSo)
{
    service.on("/v1/media/a.png", test::answer(404, "nothing"));
    answer(QStringLiteral("![a](media:a.png)"));
    EXPECT_TRUE(waitUntil([&] { return says(QStringLiteral("Image unavailable")); }));
}

TEST_F(AnswerPictures, whatIsNoPictureSaysSo)
{
    service.on("/v1/media/a.png", test::answer(200, "<html>"));
    answer(QStringLiteral("![a](media:a.png)"));
    EXPECT_TRUE(waitUntil([&] { return says(QStringLiteral("Image unavailable")); }));
}

TEST_F(AnswerPictures, anAddressThatNamesNothingIsNotAskedFor)
{
    answer(QStringLiteral("![a](media:../me)"));
    EXPECT_TRUE(waitUntil([&] { return says(QStringLiteral("Image unavailable")); }));
    EXPECT_TRUE(service.requests().isEmpty());
}

TEST_F(AnswerPictures, aPictureLinkToAVideoIsAPicture)
{
    service.on("/v1/media/a.mp4", test::answer(200, png({30, 10})));
    answer(QStringLiteral("![a](media:a.mp4)"));
    EXPECT_TRUE(waitUntil([&] {
        return picture() != nullptr && find<presentation::RoundedPicture>(picture()) != nullptr;
    }));
}

// At its end neither the avatar nor anything else has a colour but the tokens.
TEST_F(AnswerPictures, longCodeHasItsColoursInTheEnd)
{
    QString code = QStringLiteral("```python\n");
    while (code.size() < 100'000)
        code += QStringLiteral("def f(x):\n    return 'twelve' + str(12)\n");
    answer(code + QStringLiteral("```"));
    EXPECT_TRUE(waitUntil([&] {
        const QImage shown = view.grabWindow();
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                if (shown.pixelColor(x, y).saturation() > 80)
                    return true;
            }
        }
        return false;
    }));
}

TEST_F(AnswerPictures, theListStaysAtItsEndWhenAPictureComes)
{
    std::optional<Exchange> late;
    service.on("/v1/media/late.png",
               [&](const RecordedRequest &, const Exchange &exchange) { late = exchange; });
    QString text = QStringLiteral("![a](media:late.png)");
    for (int line = 0; line < 40; ++line)
        text += QStringLiteral("\n\nLine %1").arg(line);
    text += QStringLiteral("\n\n![a](media:late.png)");
    answer(text);
    ASSERT_TRUE(waitUntil([&] { return late.has_value(); }));
    auto *list = view.rootObject()->property("view").value<QQuickItem *>();
    const auto isAtEnd = [list] {
        const qreal end = list->property("originY").toReal() +
                          list->property("contentHeight").toReal() - list->height();
        return std::abs(list->property("contentY").toReal() - end) < 1;
    };
    ASSERT_TRUE(waitUntil(isAtEnd));
    const qreal before = list->property("contentHeight").toReal();
    late->respond(200, png({300, 200}));
    ASSERT_TRUE(waitUntil([&] { return list->property("contentHeight").toReal() > before + 200; }));
    EXPECT_TRUE(waitUntil(isAtEnd));
}

} // namespace velto::test
