// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/refusingnetwork.h"

#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>

#include <gtest/gtest.h>

namespace velto::shell
{

namespace
{

class RefusingNetworkTest : public testing::Test
{
protected:
    RefusingNetworkTest() { engine.setNetworkAccessManagerFactory(&network); }

    test::ScriptedServer server;
    RefusingNetwork network;
    QQmlEngine engine;
};

} // namespace

TEST_F(RefusingNetworkTest, refusesWhateverIsAskedFor)
{
    QObject owner;
    QNetworkAccessManager *manager = network.create(&owner);
    QNetworkReply *reply = manager->get(QNetworkRequest(server.url()));
    ASSERT_TRUE(test::waitUntil([&] { return reply->isFinished(); }));
    EXPECT_EQ(reply->error(), QNetworkReply::ContentAccessDenied);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(RefusingNetworkTest, aPictureFromElsewhereSendsNoRequest)
{
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nItem {\n"
                      "property alias status: image.status; property url address\n"
                      "Image { id: image; source: parent.address }\n"
                      "Text { text: '<img src=\"' + parent.address + '\">' } }",
                      QUrl(QStringLiteral("qrc:/test.qml")));
    const std::unique_ptr<QObject> item(component.createWithInitialProperties(
        {{QStringLiteral("address"), server.url(QStringLiteral("/x.png"))}}));
    ASSERT_NE(item, nullptr) << qPrintable(component.errorString());
    constexpr int error = 3; // Image.Error
    EXPECT_TRUE(test::waitUntil([&] { return item->property("status").toInt() == error; }));
    EXPECT_TRUE(server.requests().isEmpty());
}

} // namespace velto::shell
