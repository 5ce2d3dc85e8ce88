// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "replay.h"
#include "themes.h"

#include "controls/accessibility.h"
#include "platform/urlopener.h"

#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_MarkdownPlugin)

namespace velto::gallery
{

namespace
{

struct Arguments
{
    Replay::Settings settings;
    int width = 760;
    int height = 900;
    bool streams = false;
};

QString contentsOf(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", qUtf8Printable(name), qUtf8Printable(file.errorString()));
    return QString::fromUtf8(file.readAll());
}

Arguments parse(const QStringList &words)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows Markdown."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("file"),
                                 QStringLiteral("A document; one of every construct without it."));
    parser.addOptions({
        {QStringLiteral("theme"),
         QStringLiteral("One of: ") + themeNames().join(QLatin1String(", ")),
         QStringLiteral("name"), themeNames().constFirst()},
        {QStringLiteral("dark"), QStringLiteral("Light on dark.")},
        {QStringLiteral("width"), QStringLiteral("Of the window."), QStringLiteral("pixels"),
         QStringLiteral("760")},
        {QStringLiteral("height"), QStringLiteral("Of the window."), QStringLiteral("pixels"),
         QStringLiteral("900")},
        {QStringLiteral("scroll"), QStringLiteral("Begins that far down."),
         QStringLiteral("pixels"), QStringLiteral("0")},
        {QStringLiteral("replay"), QStringLiteral("Streams that many characters a second."),
         QStringLiteral("speed")},
    });
    parser.process(words);
    const QString file =
        parser.positionalArguments().value(0, QStringLiteral(":/qt/qml/Velto/Gallery/showcase.md"));
    Arguments arguments;
    arguments.settings = {QFileInfo(file).fileName(),
                          contentsOf(file),
                          parser.value(QStringLiteral("theme")),
                          parser.isSet(QStringLiteral("dark")),
                          parser.isSet(QStringLiteral("replay"))
                              ? parser.value(QStringLiteral("replay")).toInt()
                              : 1000,
                          parser.value(QStringLiteral("scroll")).toDouble()};
    arguments.width = parser.value(QStringLiteral("width")).toInt();
    arguments.height = parser.value(QStringLiteral("height")).toInt();
    arguments.streams = parser.isSet(QStringLiteral("replay"));
    return arguments;
}

int run(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationDisplayName(QStringLiteral("velto gallery"));
    controls::installAccessibility();
    const Arguments arguments = parse(QGuiApplication::arguments());
    Replay replay(arguments.settings);
    platform::URLOpener opener;
    QObject::connect(&replay, &Replay::viewChanged, &replay, [&] {
        if (replay.view() == nullptr)
            return;
        QObject::connect(replay.view(), &markdown::Markdown::linkActivated, &replay,
                         [&opener](const QUrl &link) {
                             [[maybe_unused]] const auto opening = opener.openURL(link);
                         });
    });

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.setInitialProperties({{QStringLiteral("replay"), QVariant::fromValue(&replay)},
                                 {QStringLiteral("width"), arguments.width},
                                 {QStringLiteral("height"), arguments.height}});
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Velto/Gallery/GalleryWindow.qml")));
    if (engine.rootObjects().isEmpty())
        return EXIT_FAILURE;
    if (arguments.streams)
        replay.start();
    else
        replay.showAll();
    return QGuiApplication::exec();
}

} // namespace

} // namespace velto::gallery

int main(int argc, char **argv)
{
    return velto::gallery::run(argc, argv);
}
