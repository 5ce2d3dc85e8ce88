// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "imageloadertest.h"
#include "markdown/imageview/decodedimage.h"
#include "markdown/imageview/networkimage.h"
#include "markdown/imageview/networkimageloaderkey.h"

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickView>
#include <QQuickWindow>
#include <QTest>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_MarkdownPlugin)

namespace velto::markdown
{
namespace
{

using Status = NetworkImage::Status;

/// A window whose engine knows the loader.
class View : public ImageLoaderTest
{
protected:
    View()
    {
        m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        NetworkImageLoaderKey::setLoader(m_engine, m_loader.get());
        m_window.resize(200, 200);
        m_window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_window));
    }

    /// A NetworkImage with these lines in it, in the window. `%1` is the address of the picture.
    NetworkImage *make(const QString &lines = QStringLiteral("url: \"%1\""))
    {
        QString text = QStringLiteral("import QtQuick\nimport Velto.Markdown\n"
                                      "NetworkImage { id: picture\n%1\n}")
                           .arg(lines);
        text.replace(QStringLiteral("%1"), m_server.url(m_path).toString());
        QQmlComponent component(&m_engine);
        component.setData(text.toUtf8(), QUrl());
        m_object.reset(component.create());
        auto *image = qobject_cast<NetworkImage *>(m_object.get());
        if (image == nullptr)
            throw std::runtime_error(component.errorString().toStdString());
        image->setParentItem(m_window.contentItem());
        return image;
    }
    [[nodiscard]] static bool becomes(const NetworkImage *image, Status status)
    {
        return test::waitUntil([=] { return image->status() == status; });
    }
    [[nodiscard]] static QColor colourAt(QQuickWindow &window, int x, int y)
    {
        return window.grabWindow().pixelColor(x, y);
    }

    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QObject> m_object;
};

TEST_F(View, DrawsThePicture)
{
    answerWith(test::png({20, 10}, Qt::red));
    NetworkImage *image = make();
    EXPECT_EQ(image->status(), Status::Empty);
    ASSERT_TRUE(becomes(image, Status::Success));
    EXPECT_EQ(image->size(), QSizeF(20, 10));
    EXPECT_EQ(colourAt(m_window, 10, 5), QColor(Qt::red));
    EXPECT_EQ(colourAt(m_window, 10, 15), QColor(Qt::white));
}

TEST_F(View, IsTransparentWhereThePictureIs)
{
    answerWith(test::png({20, 20}, Qt::transparent));
    ASSERT_TRUE(becomes(make(), Status::Success));
    EXPECT_EQ(colourAt(m_window, 10, 10), QColor(Qt::white));
}

TEST_F(View, AScaleOfTwoHalvesItsSize)
{
    answerWith(test::png({20, 10}));
    NetworkImage *image = make(QStringLiteral("imageScale: 2; url: \"%1\""));
    ASSERT_TRUE(becomes(image, Status::Success));
    EXPECT_EQ(image->size(), QSizeF(10, 5));
    image->setImageScale(1);
    ASSERT_TRUE(test::waitUntil([=] { return image->size() == QSizeF(20, 10); }));
    EXPECT_EQ(requests(), 1);
}

TEST_F(View, NarrowerThanThePictureItKeepsTheProportion)
{
    answerWith(test::png({100, 60}));
    NetworkImage *image = make(QStringLiteral("url: \"%1\"; width: 50"));
    ASSERT_TRUE(becomes(image, Status::Success));
    EXPECT_EQ(image->implicitWidth(), 100);
    EXPECT_EQ(image->height(), 30);
    image->setWidth(25);
    EXPECT_EQ(image->height(), 15);
    image->setWidth(150);
    EXPECT_EQ(image->height(), 60);
}

TEST_F(View, TakesNoRoomWhileThereIsNothingToShow)
{
    hold();
    NetworkImage *image = make();
    ASSERT_TRUE(isHolding(1));
    EXPECT_EQ(image->size(), QSizeF(0, 0));
    m_held.first().respond(404);
    ASSERT_TRUE(becomes(image, Status::Failure));
    EXPECT_EQ(image->size(), QSizeF(0, 0));
}

TEST_F(View, EachStateHasContentOfItsOwn)
{
    hold();
    NetworkImage *image =
        make(QStringLiteral("url: \"%1\"\n"
                            "placeholder: Item { objectName: \"waiting\"; implicitWidth: 7 }\n"
                            "success: Item { objectName: \"there\"; implicitHeight: 9 }\n"
                            "failure: Item { objectName: \"failed\"; implicitWidth: 8 }"));
    const auto shows = [image](const QString &name) {
        const QList<QQuickItem *> items = image->childItems();
        return items.size() == 1 && items.first()->objectName() == name;
    };
    EXPECT_TRUE(shows(QStringLiteral("waiting")));
    EXPECT_EQ(image->width(), 7);
    ASSERT_TRUE(isHolding(1));
    m_held.first().respond(404);
    ASSERT_TRUE(becomes(image, Status::Failure));
    EXPECT_TRUE(shows(QStringLiteral("failed")));
    EXPECT_EQ(image->width(), 8);
    m_server.on("/next", test::answer(200, test::png({2, 2})));
    image->setUrl(m_server.url(QStringLiteral("/next")));
    EXPECT_TRUE(shows(QStringLiteral("failed"))) << "stays during the load";
    ASSERT_TRUE(becomes(image, Status::Success));
    EXPECT_TRUE(shows(QStringLiteral("there")));
    EXPECT_EQ(image->height(), 9);
}

TEST_F(View, ContentCanDrawThePixelsItself)
{
    answerWith(test::png({10, 10}, Qt::blue));
    NetworkImage *image = make(QStringLiteral(
        "url: \"%1\"; width: 40; height: 40\n"
        "success: Item { DecodedImage { x: 20; width: 20; height: 20; image: picture.image } }"));
    ASSERT_TRUE(becomes(image, Status::Success));
    EXPECT_EQ(colourAt(m_window, 10, 10), QColor(Qt::white));
    EXPECT_EQ(colourAt(m_window, 30, 10), QColor(Qt::blue));
}

TEST_F(View, NewContentAppearsInTheTimeOfTheTransaction)
{
    answerWith(test::png({10, 10}));
    NetworkImage *image = make(QStringLiteral("url: \"%1\"; transaction: 20"));
    ASSERT_TRUE(becomes(image, Status::Success));
    const QQuickItem *content = image->childItems().first();
    EXPECT_LT(content->opacity(), 1);
    EXPECT_TRUE(test::waitUntil([=] { return content->opacity() == 1; }));
}

TEST_F(View, HidingEndsTheRequest)
{
    hold();
    NetworkImage *image = make();
    ASSERT_TRUE(isHolding(1));
    image->setVisible(false);
    EXPECT_TRUE(isClosed(0));
    image->setVisible(true);
    ASSERT_TRUE(isHolding(2));
    m_held.last().respond(200, test::png({2, 2}));
    EXPECT_TRUE(becomes(image, Status::Success));
}

TEST_F(View, HidingWhatItIsInEndsTheRequest)
{
    hold();
    QQuickItem pane(m_window.contentItem());
    NetworkImage *image = make();
    image->setParentItem(&pane);
    ASSERT_TRUE(isHolding(1));
    pane.setVisible(false);
    EXPECT_TRUE(isClosed(0));
    image->setParentItem(nullptr);
}

TEST_F(View, LeavingTheWindowEndsTheRequest)
{
    hold();
    NetworkImage *image = make();
    ASSERT_TRUE(isHolding(1));
    image->setParentItem(nullptr);
    EXPECT_TRUE(isClosed(0));
}

TEST_F(View, ItsEndEndsTheRequest)
{
    hold();
    make();
    ASSERT_TRUE(isHolding(1));
    m_object.reset();
    EXPECT_TRUE(isClosed(0));
}

TEST_F(View, IsDrawnInEveryWindowItMovesTo)
{
    answerWith(test::png({20, 20}, Qt::red));
    NetworkImage *image = make();
    ASSERT_TRUE(becomes(image, Status::Success));
    ASSERT_EQ(colourAt(m_window, 10, 10), QColor(Qt::red));
    {
        QQuickWindow other;
        other.resize(100, 100);
        other.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
        image->setParentItem(other.contentItem());
        EXPECT_EQ(colourAt(other, 10, 10), QColor(Qt::red));
        EXPECT_EQ(colourAt(m_window, 10, 10), QColor(Qt::white));
        image->setParentItem(nullptr); // the other window goes, its textures with it
    }
    image->setParentItem(m_window.contentItem());
    EXPECT_EQ(colourAt(m_window, 10, 10), QColor(Qt::red));
}

TEST_F(View, SurvivesItsWindow)
{
    answerWith(test::png({20, 20}, Qt::red));
    auto other = std::make_unique<QQuickWindow>();
    other->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(other.get()));
    NetworkImage *image = make();
    image->setParentItem(other->contentItem());
    ASSERT_TRUE(becomes(image, Status::Success));
    ASSERT_FALSE(other->grabWindow().isNull());
    other.reset();
    image->setParentItem(m_window.contentItem());
    EXPECT_EQ(colourAt(m_window, 10, 10), QColor(Qt::red));
}

TEST_F(View, ALargePictureIsHalvedUntilItBarelyCovers)
{
    answerWith(test::png({1000, 500}, Qt::green));
    NetworkImage *image = make(QStringLiteral("url: \"%1\"; width: 120; height: 60"));
    ASSERT_TRUE(becomes(image, Status::Success));
    const auto *pixels = qobject_cast<DecodedImage *>(image->childItems().first());
    ASSERT_NE(pixels, nullptr);
    ASSERT_TRUE(test::waitUntil([=] { return pixels->drawnPixels() == QSize(125, 62); }));
    EXPECT_EQ(colourAt(m_window, 60, 30), QColor(Qt::green));
    image->setSize({180, 90});
    EXPECT_TRUE(test::waitUntil([=] { return pixels->drawnPixels() == QSize(250, 125); }));
}

TEST_F(View, TellsItsText)
{
    answerWith(test::png({20, 20}));
    NetworkImage *image = make(QStringLiteral("url: \"%1\"; alt: \"A red square\""));
    const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(image);
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::Graphic);
    EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("A red square"));
    QAccessibleInterface *root = QAccessible::queryAccessibleInterface(&m_window);
    EXPECT_EQ(root->childCount(), 1);
    image->setAlt({});
    EXPECT_EQ(root->childCount(), 0) << "decoration";
}

/// A document with pictures wherever one can be written, `%1` being the address.
QString documentOfPictures(const QString &url)
{
    QString document;
    for (const char *pattern :
         {"![a](%1)", "text ![a](%1)", "# ![a](%1) head", "<img src=\"%1\">",
          "<p><img src=\"%1\"></p>", "> ![a](%1)", "- ![a](%1)", "- [ ] ![a](%1) b",
          "|![a](%1)|\n|-|\n|<img src='%1'>|", "~~~\n<img src=\"%1\">\n~~~", "[![a](%1)](%1)",
          "![a](%1)\n![b](%1)", "[%1](%1)"})
        document += QString::fromLatin1(pattern).arg(url) + QStringLiteral("\n\n");
    return document;
}

int picturesBelow(const QQuickItem *item)
{
    const auto *picture = qobject_cast<const NetworkImage *>(item);
    int count = picture != nullptr && picture->status() == NetworkImage::Status::Success ? 1 : 0;
    for (const QQuickItem *child : item->childItems())
        count += picturesBelow(child);
    return count;
}

TEST_F(View, ADocumentOfPicturesAsksThroughTheLoaderAndNobodyElse)
{
    int asked = 0;
    DefaultNetworkImageLoader loader(
        [&asked, fetch = app::imageData(m_transport)](QUrl url, std::stop_token stop) {
            ++asked;
            return fetch(std::move(url), std::move(stop));
        },
        *m_cache, {});
    NetworkImageLoaderKey::setLoader(m_engine, &loader);
    answerWith(test::png({20, 20}));
    QQmlComponent component(&m_engine);
    component.setData("import QtQuick\nimport Velto.Markdown\nMarkdownText { width: 200 }", {});
    m_object.reset(component.create());
    auto *text = qobject_cast<QQuickItem *>(m_object.get());
    ASSERT_NE(text, nullptr);
    text->setParentItem(m_window.contentItem());
    text->setProperty("text", documentOfPictures(m_server.url(m_path).toString()));
    m_window.resize(200, 1500);
    const auto hasPictures = [&] {
        (void)m_window.grabWindow();
        return picturesBelow(text) == 6;
    };
    ASSERT_TRUE(test::waitUntil(hasPictures));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(m_server.requests().size(), 1);
    EXPECT_EQ(m_server.connectionCount(), 1);
    m_object.reset(); // before its loader
}

TEST_F(View, WithoutALoaderAsksNobody)
{
    QQmlEngine bare;
    EXPECT_EQ(NetworkImageLoaderKey::loader(&bare), nullptr);
    NetworkImage image;
    image.setUrl(m_server.url(m_path));
    image.setParentItem(m_window.contentItem());
    EXPECT_EQ(image.imageLoader(), nullptr);
    EXPECT_EQ(image.status(), Status::Empty);
}

TEST_F(View, MadeInCodeItFindsTheLoaderOfItsParents)
{
    answerWith(test::png({20, 20}));
    NetworkImage *parent = make(QStringLiteral("width: 9"));
    NetworkImage image(parent);
    image.setUrl(m_server.url(m_path));
    EXPECT_EQ(image.imageLoader(), m_loader.get());
    EXPECT_TRUE(becomes(&image, Status::Success));
}

TEST_F(View, ALoaderOfItsOwnGoesFirst)
{
    DefaultNetworkImageCache cache;
    cache.setImage(test::plainImage({3, 3}, Qt::red), m_server.url(m_path));
    DefaultNetworkImageLoader own({}, cache, {});
    NetworkImage image;
    image.setImageLoader(&own);
    image.setSource(ImageSource{m_server.url(m_path), 1});
    image.setParentItem(m_window.contentItem());
    EXPECT_EQ(image.idealSize(), QSizeF(3, 3));
    EXPECT_EQ(requests(), 0);
}

struct Halving
{
    QSize pixels;
    QSizeF target;
    int count;
};

class Halvings : public testing::TestWithParam<Halving>
{};

TEST_P(Halvings, NeverLeaveFewerPixelsThanShow)
{
    EXPECT_EQ(DecodedImage::halvings(GetParam().pixels, GetParam().target), GetParam().count);
}

INSTANTIATE_TEST_SUITE_P(
    All, Halvings,
    testing::Values(Halving{{100, 100}, {100, 100}, 0}, Halving{{100, 100}, {300, 300}, 0},
                    Halving{{200, 200}, {100, 100}, 1}, Halving{{199, 199}, {100, 100}, 0},
                    Halving{{4000, 3000}, {400, 300}, 3}, Halving{{4000, 30}, {400, 30}, 0},
                    Halving{{4000, 3000}, {0, 10}, 0}, Halving{{0, 0}, {1, 1}, 0},
                    Halving{{1, 1}, {0.1, 0.1}, 0}));

} // namespace
} // namespace velto::markdown
