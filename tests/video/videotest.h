// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "controls/accessibility.h"
#include "presentation/video/videoplayer.h"
#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>
#include <QTest>
#include <QtEndian>

#include <gtest/gtest.h>

#include <memory>

namespace velto::test
{

/// Three seconds: red over blue, then from the middle on green, with a tone.
inline QByteArray clip()
{
    QFile file(QStringLiteral(VELTO_TEST_DATA "/clip.mp4"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no clip");
    return file.readAll();
}

/// The same, with the index that a player needs first far behind the pictures.
inline QByteArray largeClip()
{
    const QByteArray file = clip();
    constexpr quint32 gap = 6 * 1024 * 1024;
    qsizetype at = 0;
    while (file.sliced(at + 4, 4) != "moov")
        at += qFromBigEndian<quint32>(file.constData() + at);
    QByteArray box(gap, '\0');
    qToBigEndian(gap, box.data());
    box.replace(4, 4, "free");
    return file.first(at) + box + file.sliced(at);
}

/// Gives out `bytes`, or the part that is asked for, to whoever has the token; without `token` to
/// anybody.
inline ScriptedServer::Handler file(const QByteArray &bytes, const QByteArray &token = "secret")
{
    return [=](const RecordedRequest &request, const Exchange &exchange) {
        if (!token.isEmpty() && request.header("Authorization") != "Bearer " + token)
            return exchange.respond(401, "no");
        const QByteArray type = "video/mp4";
        const QByteArray range = request.header("Range").value_or("");
        if (!range.startsWith("bytes="))
            return exchange.respond(200, bytes,
                                    {{"Content-Type", type}, {"Accept-Ranges", "bytes"}});
        const QList<QByteArray> ends = range.sliced(6).split('-');
        const qint64 first = ends.value(0).toLongLong();
        const qint64 last = ends.value(1).isEmpty() ? bytes.size() - 1 : ends[1].toLongLong();
        exchange.respond(206, bytes.mid(first, last - first + 1),
                         {{"Content-Type", type},
                          {"Accept-Ranges", "bytes"},
                          {"Content-Range", "bytes " + QByteArray::number(first) + '-' +
                                                QByteArray::number(last) + '/' +
                                                QByteArray::number(bytes.size())}});
    };
}

/// A window for a video, and the service that has it.
class VideoTest : public testing::Test
{
protected:
    using State = presentation::VideoPlayback::State;

    VideoTest()
    {
        controls::installAccessibility();
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        window.resize(640, 480);
        window.show();
        server.on("/v1/media/clip.mp4", file(clip()));
    }

    /// An item of the video module in the window.
    QQuickItem *make(const QByteArray &qml)
    {
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Velto.Video\n" + qml, {});
        item.reset(qobject_cast<QQuickItem *>(component.create()));
        if (item == nullptr)
            qFatal("%s", qPrintable(component.errorString()));
        item->setParentItem(window.contentItem());
        return item.get();
    }
    [[nodiscard]] QByteArray address(const char *path = "/v1/media/clip.mp4") const
    {
        return server.url(QString::fromUtf8(path)).toEncoded();
    }
    [[nodiscard]] presentation::VideoPlayback &playback() const
    {
        auto *player = qobject_cast<presentation::VideoPlayer *>(item.get());
        if (player == nullptr)
            player = item->findChild<presentation::VideoPlayer *>();
        return *player->playback();
    }
    [[nodiscard]] bool comesTo(State state)
    {
        return waitUntil([&] { return playback().state() == state; });
    }
    [[nodiscard]] QColor colourAt(qreal x, qreal y)
    {
        return window.grabWindow().pixelColor(
            (QPointF(x, y) * window.devicePixelRatio()).toPoint());
    }
    [[nodiscard]] bool shows(QPointF place, bool (*isColour)(const QColor &))
    {
        return waitUntil([&] { return isColour(colourAt(place.x(), place.y())); });
    }
    static bool isRed(const QColor &c) { return c.red() > 180 && c.green() < 80 && c.blue() < 80; }
    static bool isGreen(const QColor &c)
    {
        return c.green() > 180 && c.red() < 80 && c.blue() < 80;
    }
    static bool isBlue(const QColor &c) { return c.blue() > 180 && c.red() < 80 && c.green() < 80; }

    ScriptedServer server;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> item;
};

} // namespace velto::test
