// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "videotest.h"

#include <QSGRendererInterface>
#include <QSignalSpy>

#include <clocale>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_VideoPlugin)

using namespace velto;
using test::answer;
using test::clip;
using test::RecordedRequest;
using test::ScriptedServer;
using test::waitUntil;

namespace
{

class VideoPlayerTest : public test::VideoTest
{
protected:
    QQuickItem *player(const QByteArray &url, const QByteArray &token = "secret",
                       const QByteArray &more = {})
    {
        return make("VideoPlayer { width: 640; height: 360; source: '" + url + "'; accessToken: '" +
                    token + "'; " + more + " }");
    }
    QQuickItem *player() { return player(address()); }

    const QPointF upper{320, 90};
    const QPointF lower{320, 270};
};

} // namespace

TEST_F(VideoPlayerTest, showsTheFirstFrameAndPlaysNothingByItself)
{
    player();
    ASSERT_TRUE(comesTo(State::Ready));
    EXPECT_TRUE(shows(upper, isRed));
    EXPECT_TRUE(shows(lower, isBlue));
    EXPECT_FALSE(playback().isPlaying());
    EXPECT_EQ(playback().position(), 0);
    EXPECT_TRUE(waitUntil([&] { return std::abs(playback().duration() - 3) < 0.3; }));
}

TEST_F(VideoPlayerTest, isDrawnByTheRendererOfThisRun)
{
    player();
    ASSERT_TRUE(shows(upper, isRed));
    const bool isSoftware = qgetenv("QT_QUICK_BACKEND") == "software";
    EXPECT_EQ(window.rendererInterface()->graphicsApi(),
              isSoftware ? QSGRendererInterface::Software : QSGRendererInterface::OpenGL);
}

TEST_F(VideoPlayerTest, playsToItsEndAndFromTheBeginningAgain)
{
    player();
    ASSERT_TRUE(comesTo(State::Ready));
    playback().play();
    ASSERT_TRUE(waitUntil([&] { return playback().isPlaying(); }));
    EXPECT_TRUE(shows(upper, isGreen));
    ASSERT_TRUE(waitUntil([&] { return !playback().isPlaying(); }));
    EXPECT_GT(playback().position(), 2);
    EXPECT_TRUE(shows(upper, isGreen)); // the last frame stays
    playback().togglePlaying();
    EXPECT_TRUE(shows(upper, isRed));
    EXPECT_TRUE(waitUntil([&] { return playback().isPlaying(); }));
    EXPECT_TRUE(shows(upper, isGreen));
}

TEST_F(VideoPlayerTest, pausesWhereItIs)
{
    player();
    ASSERT_TRUE(comesTo(State::Ready));
    playback().play();
    ASSERT_TRUE(waitUntil([&] { return playback().position() > 0.2; }));
    playback().togglePlaying();
    ASSERT_TRUE(waitUntil([&] { return !playback().isPlaying(); }));
    EXPECT_GT(playback().position(), 0);
    EXPECT_LT(playback().position(), 3);
}

TEST_F(VideoPlayerTest, seeksWithoutPlaying)
{
    player();
    ASSERT_TRUE(comesTo(State::Ready));
    playback().seek(2);
    EXPECT_TRUE(shows(upper, isGreen));
    EXPECT_TRUE(waitUntil([&] { return std::abs(playback().position() - 2) < 0.3; }));
    playback().seek(-7);
    EXPECT_TRUE(shows(upper, isRed));
    EXPECT_FALSE(playback().isPlaying());
}

TEST_F(VideoPlayerTest, theTokenGoesWithEveryRequest)
{
    server.on("/v1/media/clip.mp4", test::file(test::largeClip()));
    player();
    ASSERT_TRUE(comesTo(State::Ready));
    EXPECT_TRUE(shows(upper, isRed));
    playback().seek(2);
    EXPECT_TRUE(shows(upper, isGreen));
    ASSERT_GE(server.requests().size(), 2);
    bool asksForItsEnd = false;
    for (const RecordedRequest &request : server.requests()) {
        EXPECT_EQ(request.header("Authorization"), "Bearer secret");
        EXPECT_EQ(request.method, "GET");
        const QByteArray from = request.header("Range").value_or("").sliced(6).split('-').value(0);
        asksForItsEnd = asksForItsEnd || from.toLongLong() > 1'000'000;
    }
    EXPECT_TRUE(asksForItsEnd);
}

TEST_F(VideoPlayerTest, aTokenIsOneHeaderWhateverItHolds)
{
    server.on("/v1/media/clip.mp4", test::file(clip(), "a,X-Evil: 1"));
    player(address(), "a,X-Evil: 1");
    ASSERT_TRUE(comesTo(State::Ready));
    EXPECT_FALSE(server.requests().first().header("X-Evil").has_value());
}

TEST_F(VideoPlayerTest, withoutATokenThereIsNoHeader)
{
    server.on("/v1/media/clip.mp4", test::file(clip(), ""));
    player(address(), "");
    ASSERT_TRUE(comesTo(State::Ready));
    EXPECT_FALSE(server.requests().first().header("Authorization").has_value());
}

TEST_F(VideoPlayerTest, aLaterTokenGoesWithLaterRequests)
{
    server.on("/v1/media/clip.mp4", answer(401, "no"));
    QQuickItem *item = player(address(), "old");
    ASSERT_TRUE(comesTo(State::Failed));
    server.on("/v1/media/clip.mp4", test::file(clip(), "new"));
    item->setProperty("accessToken", QStringLiteral("new"));
    item->setProperty("source", QUrl(QString::fromUtf8(address() + "?again")));
    ASSERT_TRUE(comesTo(State::Ready));
    EXPECT_EQ(server.requests().last().header("Authorization"), "Bearer new");
}

TEST_F(VideoPlayerTest, whatCantBePlayedFails)
{
    server.on("/forbidden", answer(403, "no"));
    server.on("/page", answer(200, "<html><body>Not a video</body></html>",
                              {{"Content-Type", "video/mp4"}}));
    server.on("/empty", answer(200, ""));
    server.on("/cut", answer(200, clip().first(100)));
    const QByteArray base = server.url(QString()).toEncoded();
    for (const QByteArray &url :
         {base + "/forbidden", base + "/missing", base + "/page", base + "/empty", base + "/cut",
          QByteArray("http://127.0.0.1:1/clip.mp4"),
          QByteArray("file://" VELTO_TEST_DATA "/clip.mp4"), QByteArray("ytdl://anything"),
          QByteArray("av://lavfi:testsrc")}) {
        player(url);
        EXPECT_TRUE(comesTo(State::Failed)) << url.constData();
        playback().play();
        EXPECT_FALSE(playback().isPlaying());
    }
}

TEST_F(VideoPlayerTest, aFailedVideoMayBeFollowedByAnother)
{
    QQuickItem *item = player(server.url(QStringLiteral("/missing")).toEncoded());
    ASSERT_TRUE(comesTo(State::Failed));
    item->setProperty("source", QUrl(QString::fromUtf8(address())));
    EXPECT_TRUE(comesTo(State::Ready));
    EXPECT_TRUE(shows(upper, isRed));
}

TEST_F(VideoPlayerTest, aListOfAddressesIsNoVideoAndSendsTheTokenNowhere)
{
    ScriptedServer elsewhere;
    elsewhere.on("/clip.mp4", test::file(clip(), ""));
    const QByteArray other = elsewhere.url(QStringLiteral("/clip.mp4")).toEncoded();
    const QByteArray types[] = {"video/mp4", "application/vnd.apple.mpegurl", "audio/x-mpegurl"};
    const QByteArray lists[] = {"#EXTM3U\n#EXT-X-TARGETDURATION:3\n#EXTINF:3,\n" + other +
                                    "\n#EXT-X-ENDLIST\n",
                                "#EXTM3U\n" + other + "\n",
                                other + "\n",
                                "[playlist]\nFile1=" + other + "\nNumberOfEntries=1\n",
                                "ffconcat version 1.0\nfile '" + other + "'\n",
                                "# mpv EDL v0\n" + other + "\n"};
    for (const QByteArray &type : types) {
        for (const QByteArray &list : lists) {
            server.on("/v1/media/clip.mp4", answer(200, list, {{"Content-Type", type}}));
            player(address());
            EXPECT_TRUE(comesTo(State::Failed)) << list.constData();
        }
    }
    EXPECT_TRUE(elsewhere.requests().isEmpty());
}

TEST_F(VideoPlayerTest, isNotAskedForBeforeItShows)
{
    QQuickItem *item = player(address(), "secret", "visible: false");
    (void)window.grabWindow();
    EXPECT_TRUE(server.requests().isEmpty());
    EXPECT_EQ(playback().state(), State::Absent);
    item->setVisible(true);
    EXPECT_TRUE(comesTo(State::Ready));
}

TEST_F(VideoPlayerTest, pausesWhenItGoesOutOfSightAndStaysWhatItIs)
{
    QQuickItem *item = player();
    ASSERT_TRUE(comesTo(State::Ready));
    playback().play();
    ASSERT_TRUE(waitUntil([&] { return playback().position() > 0.2; }));
    item->setVisible(false);
    ASSERT_TRUE(waitUntil([&] { return !playback().isPlaying(); }));
    const qreal position = playback().position();
    const auto requests = server.requests().size();
    item->setVisible(true);
    EXPECT_TRUE(shows(upper, isRed));
    EXPECT_EQ(playback().state(), State::Ready);
    EXPECT_GE(playback().position(), position);
    EXPECT_FALSE(playback().isPlaying());
    EXPECT_EQ(server.requests().size(), requests);
}

TEST_F(VideoPlayerTest, mayGoAtAnyMoment)
{
    player();
    item.reset();
    player();
    ASSERT_TRUE(waitUntil([&] { return playback().handle() != nullptr; }));
    item.reset();
    player();
    ASSERT_TRUE(comesTo(State::Loading));
    item.reset();
    player();
    ASSERT_TRUE(comesTo(State::Ready));
    playback().play();
    ASSERT_TRUE(waitUntil([&] { return playback().isPlaying(); }));
    item.reset();
    (void)window.grabWindow();
    // The server sees its connections end.
    EXPECT_TRUE(waitUntil([&] { return server.openConnectionCount() == 0; }));
}

TEST_F(VideoPlayerTest, severalShowSideBySide)
{
    make("Row { Repeater { model: 3; VideoPlayer { width: 200; height: 110; accessToken: 'secret'; "
         "source: '" +
         address() + "' } } }");
    for (const qreal x : {100, 300, 500}) {
        EXPECT_TRUE(shows({x, 30}, isRed)) << x;
        EXPECT_TRUE(shows({x, 85}, isBlue)) << x;
    }
}

TEST_F(VideoPlayerTest, followsItsSize)
{
    QQuickItem *item = player();
    ASSERT_TRUE(shows(lower, isBlue));
    item->setSize({320, 180});
    EXPECT_TRUE(shows({160, 45}, isRed));
    EXPECT_TRUE(shows({160, 135}, isBlue));
}

TEST_F(VideoPlayerTest, worksUnderAnyFormatOfNumbers)
{
    ASSERT_NE(std::setlocale(LC_NUMERIC, "C.UTF-8"), nullptr);
    player();
    EXPECT_TRUE(comesTo(State::Ready));
}

TEST_F(VideoPlayerTest, volumeStaysWithinItsBounds)
{
    player();
    QSignalSpy changed(&playback(), &presentation::VideoPlayback::volumeChanged);
    playback().setVolume(0.5);
    playback().setVolume(7);
    EXPECT_EQ(playback().volume(), 1);
    playback().setVolume(-1);
    EXPECT_EQ(playback().volume(), 0);
    playback().setVolume(0);
    EXPECT_EQ(changed.count(), 3);
}
