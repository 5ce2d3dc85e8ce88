// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

// Searching a long history in the real sidebar: from a keystroke to the frame that shows its
// result.

#include "chat/appstate.h"

#include "support/memorysecretstore.h"
#include "support/scriptedserver.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickView>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_MarkdownPlugin)
Q_IMPORT_QML_PLUGIN(Velto_PresentationPlugin)
Q_IMPORT_QML_PLUGIN(Velto_ShellPlugin)

namespace
{

using namespace velto;

constexpr int conversations = 5000;
constexpr int rounds = 20;

class NoBrowser final : public platform::URLLauncher
{
public:
    QCoro::Task<bool> launch(QUrl) override { co_return false; }
};

QByteArray history()
{
    const QStringList subjects{QStringLiteral("Harbour times"), QStringLiteral("Été à Paris"),
                               QStringLiteral("東京の天気"), QStringLiteral("Ferry or train"),
                               QStringLiteral("Sorting 👩‍🚀 a list of lists in place")};
    const QDateTime now = QDateTime::currentDateTimeUtc();
    QJsonArray list;
    for (int i = 0; i < conversations; ++i) {
        list.append(QJsonObject{
            {QStringLiteral("id"), QStringLiteral("conversation-%1").arg(i)},
            {QStringLiteral("channel"), QStringLiteral("chat_ui")},
            {QStringLiteral("title"),
             QStringLiteral("%1, the %2nd").arg(subjects.at(i % subjects.size())).arg(i)},
            {QStringLiteral("summary"),
             QStringLiteral("What was found out about %1 and what remains to be done").arg(i)},
            {QStringLiteral("messageCount"), i % 40},
            {QStringLiteral("createdAt"), now.addSecs(-i * 1800LL).toString(Qt::ISODateWithMs)}});
    }
    return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

/// A user who is signed in at a service with a long history.
struct Session
{
    Session()
    {
        server.on("/auth/oauth2/token",
                  test::answer(200, R"({"access_token":"a","token_type":"Bearer",)"
                                    R"("expires_in":900,"refresh_token":"r"})"));
        server.on("/v1/me", test::answer(200, R"({"userId":"u","workspaces":[],"user":{}})"));
        server.on("/v1/conversations", test::answer(200, history()));
        (void)secrets.save(QStringLiteral("ltd.orbax.velto"), QStringLiteral("refresh_token"),
                           QStringLiteral("r"));
        state.startBootstrap();
        while (!state.conversations())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (state.conversations()->size() != conversations)
            qFatal("the history did not arrive");
    }

    QTemporaryDir home;
    test::ScriptedServer server;
    test::MemorySecretStore secrets;
    platform::URLOpener browser{std::make_unique<NoBrowser>()};
    chat::AppState state{chat::AppState::Environment{secrets, browser, server.url(),
                                                     home.filePath(QStringLiteral("cache.json"))}};
};

double threadMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Milliseconds from a key to the end of the frame after it.
struct Keystroke
{
    double passed;  ///< By the clock, the window system's pacing of frames included.
    double working; ///< What the main thread did.
};

double percentile(std::vector<double> values, double share)
{
    std::ranges::sort(values);
    return values.at(static_cast<std::size_t>(share * static_cast<double>(values.size() - 1)));
}

void waitForFrame(QQuickWindow &window)
{
    QEventLoop loop;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
    loop.exec();
}

Keystroke press(QQuickWindow &window, int key, const QString &text)
{
    QElapsedTimer clock;
    clock.start();
    const double before = threadMilliseconds();
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&window, &down);
    waitForFrame(window);
    const Keystroke spent{static_cast<double>(clock.nsecsElapsed()) / 1e6,
                          threadMilliseconds() - before};
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&window, &up);
    return spent;
}

/// Types each query letter by letter and takes it back as it was typed.
std::vector<Keystroke> search(QQuickView &view, const QStringList &queries)
{
    std::vector<Keystroke> strokes;
    for (const QString &text : queries) {
        for (const QChar letter : text)
            strokes.push_back(press(view, letter.toUpper().unicode(), QString(letter)));
        if (view.rootObject()->property("query").toString() != text)
            qFatal("the search field did not take the keys");
        for (qsizetype i = 0; i < text.size(); ++i)
            strokes.push_back(press(view, Qt::Key_Backspace, QStringLiteral("\b")));
    }
    return strokes;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    Session session;
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    view.setInitialProperties({{QStringLiteral("appState"), QVariant::fromValue(&session.state)}});
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(280, 900);
    view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Velto/Shell/SidebarNav.qml")));
    if (view.status() != QQuickView::Ready)
        qFatal("the sidebar did not load");
    view.show();
    waitForFrame(view);
    session.state.requestHistorySearchFocus();

    const QStringList queries{QStringLiteral("harbour"), QStringLiteral("été"),
                              QStringLiteral("remains"), QStringLiteral("4999"),
                              QStringLiteral("xyz")};
    search(view, queries); // what is made once
    std::vector<double> passed;
    std::vector<double> working;
    for (int round = 0; round < rounds; ++round) {
        for (const Keystroke &stroke : search(view, queries)) {
            passed.push_back(stroke.passed);
            working.push_back(stroke.working);
        }
    }
    std::printf("%zu keystrokes in a history of %d; by the clock %.1f ms in the median\n",
                passed.size(), conversations, percentile(passed, 0.5));
    std::printf("RESULT history.filter_p50_ms %.2f\n", percentile(working, 0.5));
    std::printf("RESULT history.filter_ms %.2f\n", percentile(working, 0.99));
    return 0;
}
