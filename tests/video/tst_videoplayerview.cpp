// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/tokens.h"
#include "presentation/video/fullscreenmode.h"
#include "videotest.h"

#include <QAccessible>
#include <QSignalSpy>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_VideoPlugin)

using namespace velto;
using presentation::FullScreenMode;
using test::answer;
using test::waitUntil;

namespace
{

class VideoPlayerViewTest : public test::VideoTest
{
protected:
    /// A video of 640 by 360, 40 below the upper edge of the window.
    QQuickItem *view(const QByteArray &more = {})
    {
        window.requestActivate();
        return make("VideoPlayerView { width: 640; y: 40; accessToken: 'secret'; url: '" +
                    address() + "'; " + more + " }");
    }
    void readyView(const QByteArray &more = {})
    {
        view(more);
        ASSERT_TRUE(comesTo(State::Ready));
        ASSERT_TRUE(waitUntil([&] { return playback().duration() > 0; }));
        // Layouts and visibility follow with the next frame.
        (void)window.grabWindow();
    }
    [[nodiscard]] QQuickItem *player() const
    {
        return item->findChild<presentation::VideoPlayer *>();
    }
    [[nodiscard]] QAccessibleInterface *told(QQuickItem *item) const
    {
        return QAccessible::queryAccessibleInterface(item);
    }
    /// All that assistive technology is told of below the window, by name.
    [[nodiscard]] QAccessibleInterface *named(const QString &name) const
    {
        QList<QAccessibleInterface *> open{
            QAccessible::queryAccessibleInterface(const_cast<QQuickWindow *>(&window))};
        while (!open.isEmpty()) {
            QAccessibleInterface *next = open.takeFirst();
            if (next->text(QAccessible::Name) == name && !next->state().invisible)
                return next;
            for (int i = 0; i < next->childCount(); ++i)
                open.append(next->child(i));
        }
        return nullptr;
    }
    [[nodiscard]] QAccessibleInterface *named(const char *name) const
    {
        return named(QString::fromUtf8(name));
    }
    [[nodiscard]] static QQuickItem *itemOf(QAccessibleInterface *interface)
    {
        return qobject_cast<QQuickItem *>(interface->object());
    }
    void press(Qt::Key key) { QTest::keyClick(&window, key); }
    void focusPlayer()
    {
        player()->forceActiveFocus();
        ASSERT_TRUE(waitUntil([&] { return player()->hasActiveFocus(); }));
    }
    void clickOn(QQuickItem *target, QPointF place)
    {
        QTest::mouseClick(&window, Qt::LeftButton, {}, target->mapToScene(place).toPoint());
    }
};

} // namespace

TEST_F(VideoPlayerViewTest, hasAnAreaOfSixteenToNineAndTheCaptionBelow)
{
    QQuickItem *item = view("caption: 'The tide'");
    EXPECT_EQ(player()->size(), QSizeF(640, 360));
    const auto *caption = named("The tide");
    ASSERT_NE(caption, nullptr);
    EXPECT_GT(item->implicitHeight(), 366);
    item->setProperty("caption", QString());
    EXPECT_EQ(item->implicitHeight(), 360);
    item->setWidth(320);
    EXPECT_EQ(item->implicitHeight(), 180);
}

TEST_F(VideoPlayerViewTest, isNamedByItsCaption)
{
    QQuickItem *item = view("caption: 'The tide'");
    EXPECT_EQ(told(player())->text(QAccessible::Name), QStringLiteral("The tide"));
    item->setProperty("caption", QString());
    EXPECT_EQ(told(player())->text(QAccessible::Name), QStringLiteral("Video"));
}

TEST_F(VideoPlayerViewTest, spinsUntilThereIsAPlayer)
{
    view();
    EXPECT_NE(named("Loading…"), nullptr);
    EXPECT_EQ(named("Play"), nullptr);
    ASSERT_TRUE(comesTo(State::Ready));
    EXPECT_EQ(named("Loading…"), nullptr);
    EXPECT_NE(named("Play"), nullptr);
}

TEST_F(VideoPlayerViewTest, aFailedVideoSaysSoInItsArea)
{
    server.on("/v1/media/clip.mp4", answer(404));
    view();
    EXPECT_EQ(named("Video unavailable"), nullptr);
    ASSERT_TRUE(comesTo(State::Failed));
    QAccessibleInterface *label = named("Video unavailable");
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(item->mapRectToScene(QRectF(0, 0, 640, 360))
                    .contains(label->rect().translated(-window.position())));
    EXPECT_EQ(named("Play"), nullptr);
    EXPECT_EQ(named("Loading…"), nullptr);
    EXPECT_TRUE(item->property("hasFailed").toBool());
}

TEST_F(VideoPlayerViewTest, cutsItsCorners)
{
    readyView();
    ASSERT_TRUE(shows({320, 100}, isRed));
    const QColor around = controls::Tokens::instance().background();
    for (const QPointF corner :
         {QPointF(1, 41), QPointF(638, 41), QPointF(1, 398), QPointF(638, 398)})
        EXPECT_EQ(colourAt(corner.x(), corner.y()), around) << corner.x() << ' ' << corner.y();
    EXPECT_TRUE(isRed(colourAt(20, 60)));
}

TEST_F(VideoPlayerViewTest, playsWhenThePictureIsPressed)
{
    readyView();
    clickOn(player(), {320, 120});
    ASSERT_TRUE(waitUntil([&] { return playback().isPlaying(); }));
    EXPECT_NE(named("Pause"), nullptr);
    clickOn(player(), {320, 120});
    EXPECT_TRUE(waitUntil([&] { return !playback().isPlaying(); }));
}

TEST_F(VideoPlayerViewTest, itsButtonsDoWhatTheySay)
{
    readyView();
    clickOn(itemOf(named("Play")), {10, 10});
    ASSERT_TRUE(waitUntil([&] { return playback().isPlaying(); }));
    clickOn(itemOf(named("Pause")), {10, 10});
    ASSERT_TRUE(waitUntil([&] { return !playback().isPlaying(); }));
    clickOn(itemOf(named("Mute")), {10, 10});
    EXPECT_TRUE(playback().isMuted());
    clickOn(itemOf(named("Unmute")), {10, 10});
    EXPECT_FALSE(playback().isMuted());
}

TEST_F(VideoPlayerViewTest, thePositionFollowsThePointer)
{
    readyView();
    QQuickItem *slider = itemOf(named("Position"));
    ASSERT_GT(slider->width(), 200);
    clickOn(slider, {slider->width() * 0.75, 10});
    EXPECT_TRUE(waitUntil([&] { return std::abs(playback().position() - 2.25) < 0.3; }));
    EXPECT_TRUE(shows({320, 100}, isGreen));
    EXPECT_FALSE(playback().isPlaying());
}

TEST_F(VideoPlayerViewTest, theVolumeFollowsThePointer)
{
    readyView();
    playback().setMuted(true);
    QQuickItem *slider = itemOf(named("Volume"));
    clickOn(slider, {slider->width() / 2, 10});
    EXPECT_NEAR(playback().volume(), 0.5, 0.05);
    EXPECT_FALSE(playback().isMuted());
}

TEST_F(VideoPlayerViewTest, theKeyboardDoesItAll)
{
    readyView();
    focusPlayer();
    press(Qt::Key_Space);
    ASSERT_TRUE(waitUntil([&] { return playback().isPlaying(); }));
    press(Qt::Key_Space);
    ASSERT_TRUE(waitUntil([&] { return !playback().isPlaying(); }));
    press(Qt::Key_Right);
    EXPECT_TRUE(waitUntil([&] { return playback().position() > 2.5; }));
    press(Qt::Key_Left);
    EXPECT_TRUE(waitUntil([&] { return playback().position() == 0; }));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_NEAR(playback().volume(), 0.9, 0.001);
    press(Qt::Key_Up);
    EXPECT_NEAR(playback().volume(), 0.95, 0.001);
}

TEST_F(VideoPlayerViewTest, tabGoesThroughEveryControl)
{
    readyView();
    focusPlayer();
    for (const char *name : {"Play", "Position", "Mute", "Volume", "Full screen"}) {
        press(Qt::Key_Tab);
        QAccessibleInterface *control = named(name);
        ASSERT_NE(control, nullptr) << name;
        EXPECT_EQ(window.activeFocusItem(), itemOf(control)) << name;
    }
}

TEST_F(VideoPlayerViewTest, slidersWorkWithTheKeyboardAndAssistiveTechnology)
{
    readyView();
    QAccessibleInterface *volume = named("Volume");
    EXPECT_EQ(volume->role(), QAccessible::Slider);
    ASSERT_NE(volume->valueInterface(), nullptr);
    EXPECT_EQ(volume->valueInterface()->currentValue().toReal(), 1);
    EXPECT_EQ(volume->valueInterface()->maximumValue().toReal(), 1);
    itemOf(volume)->forceActiveFocus();
    press(Qt::Key_Home);
    EXPECT_EQ(playback().volume(), 0);
    press(Qt::Key_Right);
    EXPECT_NEAR(playback().volume(), 0.05, 0.001);
    press(Qt::Key_End);
    EXPECT_EQ(playback().volume(), 1);
    volume->actionInterface()->doAction(QAccessibleActionInterface::decreaseAction());
    EXPECT_NEAR(playback().volume(), 0.95, 0.001);
    QAccessibleInterface *position = named("Position");
    EXPECT_NEAR(position->valueInterface()->maximumValue().toReal(), 3, 0.3);
    itemOf(position)->forceActiveFocus();
    press(Qt::Key_End);
    EXPECT_TRUE(waitUntil([&] { return playback().position() > 2.5; }));
}

TEST_F(VideoPlayerViewTest, fillsTheScreenAndComesBack)
{
    readyView();
    focusPlayer();
    const QWindow::Visibility before = window.visibility();
    press(Qt::Key_F);
    EXPECT_EQ(window.visibility(), QWindow::FullScreen);
    EXPECT_TRUE(item->property("isFullScreen").toBool());
    ASSERT_TRUE(waitUntil([&] { return player()->size() == QSizeF(window.size()); }));
    EXPECT_EQ(player()->mapToScene({0, 0}), QPointF(0, 0));
    EXPECT_NE(named("Leave full screen"), nullptr);
    EXPECT_TRUE(shows({100, window.height() * 0.3}, isRed));
    press(Qt::Key_Escape);
    EXPECT_EQ(window.visibility(), before);
    EXPECT_TRUE(waitUntil([&] { return player()->size() == QSizeF(640, 360); }));
    EXPECT_TRUE(shows({320, 120}, isRed));
    press(Qt::Key_F);
    press(Qt::Key_F);
    EXPECT_EQ(window.visibility(), before);
}

TEST_F(VideoPlayerViewTest, itsKeysWorkFromEveryControl)
{
    readyView();
    for (const char *name : {"Play", "Position", "Mute", "Volume", "Full screen"}) {
        itemOf(named(name))->forceActiveFocus();
        press(Qt::Key_F);
        ASSERT_TRUE(item->property("isFullScreen").toBool()) << name;
        // The window manager's word may come late, and then be of the past.
        EXPECT_TRUE(waitUntil([&] { return window.visibility() == QWindow::FullScreen; }));
        ASSERT_TRUE(waitUntil([&] { return player()->hasActiveFocus(); }));
        itemOf(named(name == std::string("Full screen") ? "Leave full screen" : name))
            ->forceActiveFocus();
        press(Qt::Key_Escape);
        ASSERT_FALSE(item->property("isFullScreen").toBool()) << name;
        EXPECT_TRUE(waitUntil([&] { return window.visibility() != QWindow::FullScreen; }));
        ASSERT_TRUE(waitUntil([&] { return player()->hasActiveFocus(); }));
    }
}

TEST_F(VideoPlayerViewTest, hasTheKeyboardWhileItFillsTheScreenWhoeverHadItBefore)
{
    window.requestActivate();
    make("FocusScope { focus: true; width: 640; height: 480; "
         "TextInput { objectName: 'other'; focus: true; width: 100; height: 20 } "
         "FocusScope { y: 40; width: 640; height: 400; VideoPlayerView { width: 640; url: '" +
         address() + "'; accessToken: 'secret' } } }");
    ASSERT_TRUE(comesTo(State::Ready));
    item->findChild<QQuickItem *>(QStringLiteral("other"))->forceActiveFocus();
    const QWindow::Visibility before = window.visibility();
    named("Full screen")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    ASSERT_EQ(window.visibility(), QWindow::FullScreen);
    ASSERT_TRUE(waitUntil([&] { return player()->hasActiveFocus(); }));
    press(Qt::Key_Escape);
    EXPECT_EQ(window.visibility(), before);
    EXPECT_TRUE(waitUntil([&] { return player()->hasActiveFocus(); }));
}

TEST_F(VideoPlayerViewTest, aVideoThatGoesGivesTheScreenBack)
{
    readyView();
    focusPlayer();
    const QWindow::Visibility before = window.visibility();
    press(Qt::Key_F);
    ASSERT_EQ(window.visibility(), QWindow::FullScreen);
    item.reset();
    EXPECT_EQ(window.visibility(), before);
}

TEST_F(VideoPlayerViewTest, escapeIsTheWindowsOwnButInFullScreen)
{
    readyView("id: top; property int escapes: 0; "
              "Shortcut { sequence: 'Escape'; onActivated: ++top.escapes }");
    const auto escapes = [&] { return item->property("escapes").toInt(); };
    focusPlayer();
    press(Qt::Key_Escape);
    EXPECT_EQ(escapes(), 1);
    press(Qt::Key_F);
    press(Qt::Key_Escape);
    EXPECT_EQ(escapes(), 1);
    EXPECT_FALSE(item->property("isFullScreen").toBool());
}

TEST(FullScreenModeTest, endsWhenTheWindowLeavesByItself)
{
    QQuickWindow window;
    window.show();
    FullScreenMode mode;
    QSignalSpy changed(&mode, &FullScreenMode::isOnChanged);
    mode.setOn(true);
    EXPECT_FALSE(mode.isOn()); // there is no window yet
    mode.setWindow(&window);
    mode.setOn(true);
    EXPECT_EQ(window.visibility(), QWindow::FullScreen);
    window.showNormal();
    EXPECT_TRUE(waitUntil([&] { return !mode.isOn(); }));
    EXPECT_EQ(changed.count(), 2);
    mode.toggle();
    EXPECT_TRUE(mode.isOn());
    mode.setWindow(nullptr);
    EXPECT_FALSE(mode.isOn());
    EXPECT_EQ(window.visibility(), QWindow::Windowed);
}
