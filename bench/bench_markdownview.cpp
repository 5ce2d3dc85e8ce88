// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

// A long reply in a real window under the software renderer: what a frame costs the main thread
// while the reply streams, and how soon a finished one shows.

#include "markdown/render/markdown.h"
#include "markdown/theme/theme.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_MarkdownPlugin)

namespace
{

using velto::markdown::Markdown;

constexpr qsizetype replySize = 100'000;
constexpr int deltaInterval = 5; // 200 deltas a second
constexpr qsizetype deltaSize = 20;
constexpr int showings = 7;

const char *const windowSource = R"(
import QtQuick
import Velto.Markdown

Window {
    id: root

    property alias scroll: flickable
    property bool follows: true

    function showText(): Item {
        return text.createObject(flickable.contentItem, {"width": 720});
    }

    height: 800
    visible: true
    width: 760

    Flickable {
        id: flickable

        anchors.fill: parent
        contentHeight: contentItem.childrenRect.height
        pixelAligned: true
        onContentHeightChanged: if (root.follows) contentY = Math.max(0, contentHeight - height)
    }
    Component {
        id: text

        Markdown {
            height: implicitHeight
        }
    }
}
)";

QString section(int number)
{
    const QString head = QStringLiteral("## Section %1\n\n").arg(number);
    return head + QStringLiteral(
                      "A reply explains what it found in **some detail**, with a few words of "
                      "`inline code`, a [link](https://example.org/%1) and enough text to fill "
                      "several lines of the column, as replies do when they are asked to be "
                      "thorough and there is a good deal to say about the matter at hand.\n\n"
                      "- The first point is a short one\n- The second point goes on for longer "
                      "than a line, so that it has to be broken somewhere near its middle\n"
                      "  - and it has a point below it\n- The third ends the list\n\n"
                      "```cpp\nfor (int row = 0; row < %1; ++row)\n    total += value(row) * "
                      "weight[row];\nreturn total;\n```\n\n"
                      "| Name | Count | Share |\n| --- | ---: | ---: |\n| alpha | 12 | 30 % |\n"
                      "| beta | 28 | 70 % |\n\n"
                      "> What is quoted here is one sentence of another text, and that is all.\n\n"
                      "Another paragraph closes the section, *without* much of a point but with "
                      "the length that paragraphs tend to have.\n\n")
                      .arg(number);
}

QString reply()
{
    QString text;
    for (int number = 1; text.size() < replySize; ++number)
        text += section(number);
    return text.left(replySize);
}

double threadMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double percentile(std::vector<double> values, double share)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

void waitForFrames(QQuickWindow &window, int count)
{
    QEventLoop loop;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, [&] {
        if (--count <= 0)
            loop.quit();
        else
            window.update();
    });
    window.update();
    loop.exec();
}

Markdown *makeView(QQuickWindow &window)
{
    QQuickItem *item = nullptr;
    QMetaObject::invokeMethod(&window, "showText", Q_RETURN_ARG(QQuickItem *, item));
    return qobject_cast<Markdown *>(item);
}

/// What each frame took of the main thread, the deltas before it included. `shown` is there at
/// first.
std::vector<double> stream(QQuickWindow &window, const QString &text, const QString &shown = {})
{
    Markdown *view = makeView(window);
    view->setText(shown);
    waitForFrames(window, 5);
    std::vector<double> frames;
    double before = threadMilliseconds();
    QEventLoop loop;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, [&] {
        const double now = threadMilliseconds();
        frames.push_back(now - before);
        before = now;
    });
    qsizetype sent = 0;
    QTimer deltas;
    deltas.setTimerType(Qt::PreciseTimer);
    QElapsedTimer clock;
    clock.start();
    QObject::connect(&deltas, &QTimer::timeout, &loop, [&] {
        // As many as are due, as a socket gives them after a frame that took its time.
        const qsizetype due = clock.elapsed() / deltaInterval * deltaSize;
        for (; sent < std::min(due, text.size()); sent += deltaSize)
            view->append(text.mid(sent, deltaSize));
        if (sent >= text.size())
            loop.quit();
    });
    deltas.start(deltaInterval);
    loop.exec();
    delete view;
    return frames;
}

void printStream(const std::vector<double> &frames)
{
    const auto fifth = static_cast<std::ptrdiff_t>(frames.size() / 5);
    const std::vector<double> start(frames.begin(), frames.begin() + fifth);
    const std::vector<double> end(frames.end() - fifth, frames.end());
    for (const auto &[name, part] : {std::pair("start", start), std::pair("end", end)}) {
        std::printf("RESULT markdown.frame_p50_ms_%s %.2f\n", name, percentile(part, 0.5));
        std::printf("RESULT markdown.frame_p95_ms_%s %.2f\n", name, percentile(part, 0.95));
        std::printf("RESULT markdown.frame_p99_ms_%s %.2f\n", name, percentile(part, 0.99));
    }
    std::printf("RESULT markdown.frames %zu\n", frames.size());
}

/// The end of a block of code of half a megabyte.
void measureCode(QQuickWindow &window)
{
    const QString line = QStringLiteral("    total += value(row) * weight[row]; // once more\n");
    const QString before = QStringLiteral("```cpp\n") + line.repeated(500'000 / line.size());
    const std::vector<double> frames = stream(window, line.repeated(400), before);
    std::printf("RESULT markdown.code_500k_p50_ms %.2f\n", percentile(frames, 0.5));
    std::printf("RESULT markdown.code_500k_p99_ms %.2f\n", percentile(frames, 0.99));
}

void measureShowing(QQuickWindow &window, const QString &text)
{
    window.setProperty("follows", false);
    std::vector<double> first;
    std::vector<double> complete;
    for (int showing = 0; showing < showings; ++showing) {
        waitForFrames(window, 3);
        QElapsedTimer clock;
        clock.start();
        Markdown *view = makeView(window);
        view->setText(text);
        waitForFrames(window, 1);
        first.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        while (!view->isMeasured())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        complete.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        delete view;
    }
    std::printf("RESULT markdown.show_100k_ms %.1f\n", percentile(first, 0.5));
    std::printf("RESULT markdown.show_100k_complete_ms %.1f\n", percentile(complete, 0.5));
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(&engine);
    component.setData(windowSource, QUrl(QStringLiteral("qrc:/bench.qml")));
    const std::unique_ptr<QObject> made(component.create());
    auto *window = qobject_cast<QQuickWindow *>(made.get());
    if (window == nullptr)
        qFatal("%s", qUtf8Printable(component.errorString()));
    waitForFrames(*window, 5);
    const QString text = reply();
    measureShowing(*window, text);
    window->setProperty("follows", true);
    printStream(stream(*window, text));
    measureCode(*window);
    return EXIT_SUCCESS;
}
