// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/log.h"
#include "chat/appstate.h"
#include "chat/conversationcache.h"
#include "controls/accessibility.h"
#include "controls/tokens.h"
#include "frametrace.h"
#include "mainwindow.h"
#include "markdown/imageview/networkimageloaderkey.h"
#include "patientsecrets.h"
#include "platform/appearance.h"
#include "platform/instance.h"
#include "platform/notification.h"
#include "platform/urlopener.h"
#include "presence.h"
#include "presentation/media/mediaimageloader.h"
#include "service/apibaseurl.h"
#include "service/transport.h"
#include "shell/closenotice.h"
#include "shell/commandline.h"
#include "shell/deeplinks.h"
#include "shell/refusingnetwork.h"
#include "startahead.h"
#include "startuptrace.h"
#include "terminationsignals.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QThreadPool>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <optional>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_MarkdownPlugin)
Q_IMPORT_QML_PLUGIN(Velto_PresentationPlugin)
Q_IMPORT_QML_PLUGIN(Velto_ShellPlugin)
Q_IMPORT_QML_PLUGIN(Velto_VideoPlugin)

namespace velto::app
{

namespace
{

void describeApplication()
{
    QGuiApplication::setOrganizationName(QStringLiteral("velto"));
    QGuiApplication::setApplicationName(QStringLiteral("velto"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("velto"));
    QGuiApplication::setApplicationVersion(QStringLiteral(VELTO_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("ltd.orbax.velto"));
}

// What the first frame does without, while nobody waits for it.
void loadTheRest(QQmlEngine &engine)
{
    QThreadPool::globalInstance()->start(&service::loadHTTPLibrary);
    const QUrl screen(QStringLiteral("qrc:/qt/qml/Velto/Shell/MacShell.qml"));
    new QQmlComponent(&engine, screen, QQmlComponent::Asynchronous, &engine);
}

void followAppearance(const platform::Appearance &appearance)
{
    using controls::Tokens;
    const auto schemeOf = [](platform::Looks::Scheme scheme) {
        switch (scheme) {
        case platform::Looks::Scheme::NoPreference:
            return Tokens::Scheme::NoPreference;
        case platform::Looks::Scheme::Dark:
            return Tokens::Scheme::Dark;
        case platform::Looks::Scheme::Light:
            return Tokens::Scheme::Light;
        }
        Q_UNREACHABLE();
    };
    const auto apply = [&appearance, schemeOf] {
        const platform::Looks &looks = appearance.looks();
        Tokens &tokens = Tokens::instance();
        tokens.setScheme(schemeOf(looks.scheme));
        tokens.setAccent(looks.accent.value_or(QColor()));
        tokens.setTextFactor(looks.textFactor);
    };
    QObject::connect(&appearance, &platform::Appearance::looksChanged, &Tokens::instance(), apply);
    apply();
}

void forgetWhenSignedOut(presentation::MediaImageLoader &pictures, const chat::AppState &state)
{
    QObject::connect(&state, &chat::AppState::authStatusChanged, &pictures, [&pictures, &state] {
        if (state.authStatusKind() == chat::AuthStatus::Kind::LoggedOut)
            pictures.forget();
    });
}

void beginAfterFirstFrame(PatientSecrets &secrets, QQuickWindow &window, QQmlEngine &engine)
{
    const auto begin = [&secrets] { secrets.begin(); };
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window, begin,
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &engine, [&engine] { loadTheRest(engine); },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    // A window that nobody sees draws nothing; the session continues all the same.
    QTimer::singleShot(std::chrono::milliseconds(500), &window, begin);
}

/// A note in the window, for a desktop that shows none.
void showNote(QQmlEngine &engine, QQuickWindow &window, shell::CloseNotice &notice)
{
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Velto/Shell/CloseNote.qml")));
    QObject *note = component.createWithInitialProperties(
        {{QStringLiteral("title"), shell::CloseNotice::title()},
         {QStringLiteral("message"), shell::CloseNotice::text()},
         {QStringLiteral("parent"), QVariant::fromValue(window.contentItem())}});
    if (note == nullptr)
        return notice.noteRead(); // better closed untold than open for good
    note->setParent(&window);
    QObject::connect(note, SIGNAL(read()), &notice, SLOT(noteRead()));
    QObject::connect(note, SIGNAL(read()), note, SLOT(deleteLater()));
}

void tellWhenFirstClosed(QQmlEngine &engine, QQuickWindow &window, const Presence &presence)
{
    const auto staysInSight = [&presence] { return presence.isInSight(); };
    auto *notice = new shell::CloseNotice(window, staysInSight, &platform::notify, &window);
    QObject::connect(notice, &shell::CloseNotice::noteWanted, notice,
                     [&engine, &window, notice] { showNote(engine, window, *notice); });
}

void answer(platform::Instance &instance, MainWindow &window, shell::DeepLinks &links,
            chat::AppState &state)
{
    using platform::Instance;
    QObject::connect(&instance, &Instance::launched, &window,
                     [&window, &links](const platform::Launch &launch) {
                         window.present(launch.token);
                         links.open(launch.urls);
                     });
    QObject::connect(&instance, &Instance::newChatRequested, &window,
                     [&window, &state](const QByteArray &token) {
                         window.present(token);
                         state.newConversation();
                         state.requestInputFocus();
                     });
    QObject::connect(&instance, &Instance::quitRequested, qApp, &QCoreApplication::quit);
    QObject::connect(&instance, &Instance::replaced, qApp, [] {
        base::logLine(QLatin1String("app"), QStringLiteral("another velto has taken over"));
        QCoreApplication::quit();
    });
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &instance, &Instance::release);
}

/// Whether this program is the one that goes on. Else somebody else does what it was started for.
bool isTheOne(platform::Instance &instance, const shell::CommandLine &line, const QByteArray &token)
{
    using Standing = platform::Instance::Standing;
    if (instance.standing() != Standing::Second)
        return true;
    if (line.isService)
        return false; // whoever wanted it started asks the other one now
    const Standing standing = instance.handOver({.urls = line.links, .token = token});
    if (standing == Standing::Successor)
        base::logLine(QLatin1String("app"),
                      QStringLiteral("the velto that runs doesn't answer: this one takes over"));
    return standing != Standing::Second;
}

/// A service that nobody has anything for, as when it was started by hand.
void endUnlessWanted(const MainWindow &window)
{
    constexpr std::chrono::seconds patience(10);
    auto *timer = new QTimer(qApp);
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, qApp, &QCoreApplication::quit);
    QObject::connect(&window, &MainWindow::loaded, timer, &QTimer::stop);
    timer->start(patience);
}

int run(const shell::CommandLine &line, const QByteArray &token)
{
    const auto instance = platform::makeSystemInstance();
    instance->claim();
    const TerminationSignals signals_;
    controls::installAccessibility();

    readFontsAhead();
    shell::RefusingNetwork network;
    QQmlEngine engine;
    engine.setNetworkAccessManagerFactory(&network);
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QObject::connect(&engine, &QQmlEngine::quit, qApp, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    std::optional<FileReadAhead> reading;
    if (!line.isService)
        reading.emplace(engine, MainWindow::file());

    PatientSecrets secrets(platform::makeSystemSecretStore());
    platform::URLOpener browser;
    chat::AppState state(
        {secrets, browser, service::apiBaseURL(), chat::conversationcache::defaultFile()});
    browser.setOwnSchemeHandler([&state](const QUrl &url) { state.handleDeepLink(url); });

    service::Transport pictureTransport;
    presentation::MediaImageLoader pictures(pictureTransport, service::apiBaseURL(),
                                            [&state] { return state.api().accessToken(); });
    forgetWhenSignedOut(pictures, state);

    markdown::NetworkImageLoaderKey::setLoader(engine, &pictures);

    MainWindow window(engine, state);
    if (!line.isService)
        window.prepare(); // while the bus says who has the name
    if (!isTheOne(*instance, line, token))
        return EXIT_SUCCESS;
    Presence presence(engine, state, window);
    shell::DeepLinks links(state);
    links.open(line.links);
    QObject::connect(&window, &MainWindow::loaded, &engine, [&](QQuickWindow *loaded) {
        if (line.tracesStartup)
            traceFirstFrame(*loaded);
        if (line.tracesFrames)
            traceFrames(*loaded);
        beginAfterFirstFrame(secrets, *loaded, engine);
        tellWhenFirstClosed(engine, *loaded, presence);
    });
    QObject::connect(&window, &MainWindow::appeared, &engine, [&links, &presence] {
        links.begin();
        presence.begin();
    });
    answer(*instance, window, links, state);
    if (line.isService) {
        endUnlessWanted(window);
    } else if (!window.load()) {
        return EXIT_FAILURE;
    }
    const auto appearance = platform::makeSystemAppearance();
    followAppearance(*appearance);
    return QGuiApplication::exec();
}

void print(FILE *file, const QString &text)
{
    std::fputs(qUtf8Printable(text), file);
    std::fflush(file);
}

/// What needs no desktop.
bool printsOnly(int argc, char **argv)
{
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments.append(QString::fromLocal8Bit(argv[index]));
    const shell::CommandLine line = shell::parseCommandLine(arguments);
    if (line.showsHelp)
        print(stdout, shell::usage());
    else if (line.showsVersion)
        print(stdout, QStringLiteral("velto %1\n").arg(QLatin1String(VELTO_VERSION)));
    return line.showsHelp || line.showsVersion;
}

// The threads beside the main one do little at the same time: of heaps of their own, each would
// keep what it had needed most.
void shareHeaps()
{
    mallopt(M_ARENA_MAX, 2);
}

int start(int argc, char **argv)
{
    if (printsOnly(argc, argv))
        return EXIT_SUCCESS;
    constexpr int wrongUsage = 2;
    shareHeaps();
    const QByteArray token = platform::launchToken();
    readFontConfigurationAhead();
    describeApplication();
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // Without what is Qt's own.
    const shell::CommandLine line = shell::parseCommandLine(QGuiApplication::arguments().mid(1));
    if (!line.unknown.isNull()) {
        print(stderr, QStringLiteral("velto: “%1” is neither an option nor a link of velto\n%2")
                          .arg(line.unknown, shell::usage()));
        return wrongUsage;
    }
    const int result = run(line, token);
    // Who reads fonts ahead must not find the application gone.
    QThreadPool::globalInstance()->waitForDone();
    return result;
}

} // namespace

} // namespace velto::app

int main(int argc, char **argv)
{
    return velto::app::start(argc, argv);
}
