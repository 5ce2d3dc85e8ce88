// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/appstate.h"
#include "chat/conversationcache.h"
#include "controls/accessibility.h"
#include "controls/tokens.h"
#include "frametrace.h"
#include "markdown/imageview/networkimageloaderkey.h"
#include "patientsecrets.h"
#include "platform/colorscheme.h"
#include "platform/urlopener.h"
#include "presentation/media/mediaimageloader.h"
#include "service/apibaseurl.h"
#include "service/transport.h"
#include "shell/refusingnetwork.h"
#include "startuptrace.h"
#include "terminationsignals.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>
#include <QThreadPool>
#include <QTimer>

#include <fontconfig/fontconfig.h>

#include <chrono>

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

// The first text waits for the system's fonts to be read, which takes as long as loading the
// window: their configuration can be read even before there is an application, their list then.
void readFontConfigurationAhead()
{
    QThreadPool::globalInstance()->start([] { FcInit(); });
}

void readFontsAhead()
{
    QThreadPool::globalInstance()->start(
        [font = QGuiApplication::font()] { (void)QFontInfo(font).exactMatch(); });
}

// What the first frame does without, while nobody waits for it.
void loadTheRest(QQmlEngine &engine)
{
    QThreadPool::globalInstance()->start(&service::loadHTTPLibrary);
    const QUrl screen(QStringLiteral("qrc:/qt/qml/Velto/Shell/MacShell.qml"));
    new QQmlComponent(&engine, screen, QQmlComponent::Asynchronous, &engine);
}

void followColorScheme(const platform::ColorScheme &scheme)
{
    using controls::Tokens;
    using Preference = platform::ColorScheme::Preference;
    const auto apply = [&scheme] {
        switch (scheme.preference()) {
        case Preference::NoPreference:
            return Tokens::instance().setScheme(Tokens::Scheme::NoPreference);
        case Preference::Dark:
            return Tokens::instance().setScheme(Tokens::Scheme::Dark);
        case Preference::Light:
            return Tokens::instance().setScheme(Tokens::Scheme::Light);
        }
    };
    QObject::connect(&scheme, &platform::ColorScheme::preferenceChanged, &Tokens::instance(),
                     apply);
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

QQuickWindow *loadWindow(QQmlApplicationEngine &engine, chat::AppState &state)
{
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.setInitialProperties({{QStringLiteral("appState"), QVariant::fromValue(&state)}});
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Velto/Shell/Main.qml")));
    return qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
}

int run(int argc, char **argv)
{
    readFontConfigurationAhead();
    describeApplication();
    const QGuiApplication application(argc, argv);
    const TerminationSignals signals_;
    controls::installAccessibility();

    readFontsAhead();

    PatientSecrets secrets(platform::makeSystemSecretStore());
    platform::URLOpener browser;
    chat::AppState state(
        {secrets, browser, service::apiBaseURL(), chat::conversationcache::defaultFile()});
    browser.setOwnSchemeHandler([&state](const QUrl &url) { state.handleDeepLink(url); });
    // Ahead of the window, so that the cached conversation is in its first frame.
    state.startBootstrap();

    service::Transport pictureTransport;
    presentation::MediaImageLoader pictures(pictureTransport, service::apiBaseURL(),
                                            [&state] { return state.api().accessToken(); });
    forgetWhenSignedOut(pictures, state);

    shell::RefusingNetwork network;
    QQmlApplicationEngine engine;
    engine.setNetworkAccessManagerFactory(&network);
    markdown::NetworkImageLoaderKey::setLoader(engine, &pictures);
    QQuickWindow *window = loadWindow(engine, state);
    if (window == nullptr) {
        secrets.begin(); // whoever waits there has to end
        return EXIT_FAILURE;
    }
    if (QGuiApplication::arguments().contains(QLatin1String("--trace-startup")))
        traceFirstFrame(*window);
    if (QGuiApplication::arguments().contains(QLatin1String("--trace-frames")))
        traceFrames(*window);
    beginAfterFirstFrame(secrets, *window, engine);
    const auto scheme = platform::makeSystemColorScheme();
    followColorScheme(*scheme);
    return QGuiApplication::exec();
}

} // namespace

} // namespace velto::app

int main(int argc, char **argv)
{
    return velto::app::run(argc, argv);
}
