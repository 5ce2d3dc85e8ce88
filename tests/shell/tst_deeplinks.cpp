// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/deeplinks.h"

#include "chat/appstate.h"
#include "platform/urlopener.h"
#include "support/memorysecretstore.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velto::shell
{

namespace
{

class DeepLinksTest : public testing::Test
{
protected:
    static QList<QUrl> drafts(const QStringList &texts)
    {
        QList<QUrl> links;
        for (const QString &text : texts)
            links.append(QUrl(QStringLiteral("ltd.orbax.velto://new?text=") + text));
        return links;
    }

    QTemporaryDir folder;
    test::MemorySecretStore secrets;
    platform::URLOpener browser;
    chat::AppState state{{secrets, browser, QUrl(QStringLiteral("http://127.0.0.1:9")),
                          folder.filePath(QStringLiteral("conversation.json"))}};
    DeepLinks links{state};
};

} // namespace

TEST_F(DeepLinksTest, waitForTheWindow)
{
    links.open(drafts({QStringLiteral("first")}));
    EXPECT_TRUE(state.inputDraft().isEmpty());
    EXPECT_EQ(state.focusInputRequest(), 0);
    links.begin();
    EXPECT_EQ(state.inputDraft(), QStringLiteral("first"));
    EXPECT_EQ(state.focusInputRequest(), 1);
}

TEST_F(DeepLinksTest, actAtOnceWhenItStands)
{
    links.begin();
    links.open(drafts({QStringLiteral("now")}));
    EXPECT_EQ(state.inputDraft(), QStringLiteral("now"));
}

TEST_F(DeepLinksTest, areTakenInTheirOrderEachOnce)
{
    links.open(drafts({QStringLiteral("one"), QStringLiteral("two")}));
    links.open(drafts({QStringLiteral("three")}));
    links.begin();
    EXPECT_EQ(state.inputDraft(), QStringLiteral("three"));
    EXPECT_EQ(state.focusInputRequest(), 3);
    links.begin();
    EXPECT_EQ(state.focusInputRequest(), 3);
}

TEST_F(DeepLinksTest, ofOtherKindsAndNoneAtAllChangeNothing)
{
    links.begin();
    links.open({});
    links.open({QUrl(), QUrl(QStringLiteral("ltd.orbax.velto://elsewhere?text=no"))});
    EXPECT_TRUE(state.inputDraft().isEmpty());
    EXPECT_EQ(state.focusInputRequest(), 0);
}

} // namespace velto::shell
