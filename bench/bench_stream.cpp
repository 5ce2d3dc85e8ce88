// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/chatstreamevent.h"
#include "chat/linereader.h"
#include "chat/messagelistmodel.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickView>

#include <algorithm>
#include <cstdio>
#include <vector>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_MarkdownPlugin)
Q_IMPORT_QML_PLUGIN(Velto_PresentationPlugin)

/// What a streamed answer costs on its way from the wire into the list that a window shows.
///
/// stream.rate_vs_json: bytes of a recorded stream through line reader, frame, event and message
/// list with a view on it, beside QJsonDocument parsing the same lines and doing nothing with them.
/// stream.rate_vs_json_drawn: the same with a frame drawn after every 16 KB, the drawing not
/// counted: what the caches that it empties cost. stream.delta_growth: cost of a delta in the last
/// tenth of a message of 1 MB over the first's.
namespace
{

using namespace velto::chat;

constexpr qsizetype pieceSize = 16 * 1024; // what the transport hands over at a time
constexpr int passes = 15;

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// Draws what there is to draw and lets go of the views of rows that are gone, which processEvents
/// leaves alone outside a running event loop.
void settle()
{
    QGuiApplication::processEvents();
    QGuiApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QByteArray recordedStream()
{
    QFile file(QStringLiteral(VELTO_BENCH_DATA "/recorded_stream.txt"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no recorded stream");
    return file.readAll();
}

QList<QByteArray> pieces(const QByteArray &bytes)
{
    QList<QByteArray> list;
    for (qsizetype at = 0; at < bytes.size(); at += pieceSize)
        list.append(bytes.mid(at, pieceSize));
    return list;
}

QList<QByteArray> payloads(const QByteArray &bytes)
{
    QList<QByteArray> list;
    for (const QByteArray &line : bytes.split('\n')) {
        if (line.startsWith("data: "))
            list.append(line.mid(6));
    }
    return list;
}

double parseSeconds(const QList<QByteArray> &lines)
{
    QElapsedTimer timer;
    timer.start();
    qsizetype objects = 0;
    for (const QByteArray &line : lines)
        objects += QJsonDocument::fromJson(line).isObject() ? 1 : 0;
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    if (objects != lines.size())
        qFatal("the recorded stream holds something else than frames");
    return seconds;
}

void streamPiece(LineReader &reader, const QByteArray &piece, MessageListModel &messages)
{
    reader.append(piece);
    while (const auto line = reader.next()) {
        auto frame = frameFromLine(*line);
        if (!frame)
            continue;
        if (const auto event = eventFrom(std::move(*frame)))
            messages.apply(*event, messages.count() - 1);
    }
}

/// Seconds on the road itself, with or without frames drawn between the pieces.
double streamSeconds(const QList<QByteArray> &wire, MessageListModel &messages, bool draws)
{
    messages.setMessages({newMessage(ChatMessage::Role::User, {textPart(QStringLiteral("Go"))}),
                          newMessage(ChatMessage::Role::Assistant)});
    settle();
    LineReader reader;
    qint64 spent = 0;
    for (const QByteArray &piece : wire) {
        QElapsedTimer timer;
        timer.start();
        streamPiece(reader, piece, messages);
        spent += timer.nsecsElapsed();
        if (draws)
            settle();
    }
    settle();
    return static_cast<double>(spent) / 1e9;
}

double deltaGrowth(MessageListModel &messages)
{
    constexpr int deltas = 200'000; // of 5 characters: 1 MB
    const QByteArray line = R"(data: {"type":"text-delta","delta":"word "})";
    messages.setMessages({newMessage(ChatMessage::Role::Assistant)});
    settle();
    std::vector<double> tenths;
    for (int tenth = 0; tenth < 10; ++tenth) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < deltas / 10; ++i)
            messages.apply(*eventFrom(*frameFromLine(line)), 0);
        tenths.push_back(static_cast<double>(timer.nsecsElapsed()));
    }
    return tenths.back() / tenths.front();
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication app(argc, argv);
    MessageListModel messages;
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    view.setInitialProperties({{QStringLiteral("messages"), QVariant::fromValue(&messages)}});
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(960, 720);
    view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Velto/Presentation/MessageList.qml")));
    if (view.status() != QQuickView::Ready)
        qFatal("the message list did not load");
    view.show();

    const QByteArray recorded = recordedStream();
    const QList<QByteArray> wire = pieces(recorded);
    const QList<QByteArray> lines = payloads(recorded);
    std::vector<double> ratios;
    std::vector<double> drawn;
    std::vector<double> rates;
    std::vector<double> growths;
    for (int pass = 0; pass < passes; ++pass) {
        const double parse = parseSeconds(lines);
        const double stream = streamSeconds(wire, messages, false);
        drawn.push_back(parse / streamSeconds(wire, messages, true));
        ratios.push_back(parse / stream);
        rates.push_back(static_cast<double>(recorded.size()) / stream / 1e6);
        growths.push_back(deltaGrowth(messages));
    }
    std::printf("median of %d passes: %.1f MB/s through the client, %lld frames\n", passes,
                median(rates), static_cast<long long>(lines.size()));
    std::printf("RESULT stream.rate_vs_json %.3f\n", median(ratios));
    std::printf("RESULT stream.rate_vs_json_drawn %.3f\n", median(drawn));
    std::printf("RESULT stream.delta_growth %.3f\n", median(growths));
    return 0;
}
