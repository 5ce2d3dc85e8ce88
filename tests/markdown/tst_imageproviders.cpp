// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/imageview/networkimage.h"
#include "markdown/render/environment.h"
#include "markdown/render/imageproviders.h"
#include "markdown/render/textbox.h"
#include "pictures.h"
#include "viewtest.h"

#include <QFile>
#include <QTemporaryDir>

namespace velto::markdown
{

namespace
{

class ProviderTest : public ViewTest
{
protected:
    ProviderTest()
    {
        QFile file(m_files.filePath(QStringLiteral("hills.png")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(test::png({30, 20}));
    }

    [[nodiscard]] QString folder() const { return m_files.path() + u'/'; }

    QTemporaryDir m_files;
};

const QUrl hills(QStringLiteral("https://example.org/pictures/hills.png"));
const QUrl missing(QStringLiteral("https://example.org/pictures/missing.png"));

} // namespace

TEST_F(ProviderTest, AnAssetIsFoundByTheLastPartOfItsPath)
{
    AssetImageProvider provider(folder());
    QQuickItem *item = provider.makeImage(hills, QStringLiteral("Hills"), &view);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->parentItem(), &view);
    EXPECT_EQ(QSizeF(item->implicitWidth(), item->implicitHeight()), QSizeF(30, 20));
    EXPECT_EQ(accessible(item)->text(QAccessible::Name), QStringLiteral("Hills"));
    EXPECT_EQ(provider.makeImage(missing, {}, &view), nullptr);
    delete item;
}

TEST_F(ProviderTest, AnInlineAssetIsItsPixelsOrAFailure)
{
    AssetInlineImageProvider provider(folder());
    const auto found = test::await(provider.image(hills, {}));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->size(), QSize(30, 20));
    EXPECT_FALSE(test::await(provider.image(missing, {})));
}

TEST_F(ProviderTest, AnyFunctionIsAProvider)
{
    QList<QUrl> asked;
    AnyImageProvider provider([&asked](const QUrl &url, const QString &, QQuickItem *parent) {
        asked.append(url);
        return new QQuickItem(parent);
    });
    view.setImageProvider(&provider);
    show("![a](https://example.org/a.png)");
    EXPECT_EQ(asked, QList<QUrl>{QUrl(QStringLiteral("https://example.org/a.png"))});
    view.setImageProvider(nullptr);
}

TEST_F(ProviderTest, ByDefaultAPictureIsANetworkImage)
{
    DefaultImageProvider provider;
    const std::unique_ptr<QQuickItem> item(provider.makeImage(hills, QStringLiteral("Hills"), {}));
    const auto *image = qobject_cast<NetworkImage *>(item.get());
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->url(), hills);
    EXPECT_EQ(image->alt(), QStringLiteral("Hills"));
}

TEST_F(ProviderTest, WithoutALoaderAnInlinePictureFails)
{
    DefaultInlineImageProvider provider(nullptr);
    EXPECT_FALSE(test::await(provider.image(hills, {})));
}

TEST(EnvironmentTest, HasItsDefaults)
{
    const Environment environment;
    EXPECT_EQ(environment.baseURL, QUrl());
    EXPECT_EQ(environment.imageBaseURL, QUrl());
    EXPECT_FALSE(environment.tightSpacingEnabled);
    EXPECT_EQ(environment.listLevel, 0);
    EXPECT_EQ(environment.softBreakMode, SoftBreak::Mode::Space);
    EXPECT_NE(dynamic_cast<const PlainTextCodeSyntaxHighlighter *>(
                  environment.codeSyntaxHighlighter.get()),
              nullptr);
    EXPECT_EQ(environment.text, TextAttributes());
}

TEST(EnvironmentTest, PicturesAreRelativeToTheirBaseOrElseToThatOfLinks)
{
    Environment environment;
    environment.baseURL = QUrl(QStringLiteral("https://example.org/a/"));
    EXPECT_EQ(environment.resolvedImage(QStringLiteral("x.png")),
              QUrl(QStringLiteral("https://example.org/a/x.png")));
    environment.imageBaseURL = QUrl(QStringLiteral("https://pictures.org/"));
    EXPECT_EQ(environment.resolvedImage(QStringLiteral("x.png")),
              QUrl(QStringLiteral("https://pictures.org/x.png")));
    EXPECT_EQ(environment.resolvedImage(QStringLiteral("https://y.org/x.png")),
              QUrl(QStringLiteral("https://y.org/x.png")));
}

TEST_F(ProviderTest, TheTextOfAThemeMergesWithWhatIsThere)
{
    show("a");
    const TextAttributes before = text(0).text().runs().constFirst().attributes;
    view.setTheme(Theme().text(FontWeight{QFont::Bold}));
    settle();
    TextAttributes expected = before;
    expected.fontProperties.weight = QFont::Bold;
    EXPECT_EQ(text(0).text().runs().constFirst().attributes, expected);
    EXPECT_GT(expected.fontProperties.scaledSize(), 8);
}

} // namespace velto::markdown
