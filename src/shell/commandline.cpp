// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/commandline.h"

#include "platform/urlopener.h"

namespace velto::shell
{

namespace
{

bool isOwnLink(const QString &argument)
{
    return argument.startsWith(platform::ownScheme + QLatin1Char(':'), Qt::CaseInsensitive);
}

bool *optionOf(CommandLine &line, const QString &argument)
{
    if (argument == u"--help" || argument == u"-h")
        return &line.showsHelp;
    if (argument == u"--version" || argument == u"-v")
        return &line.showsVersion;
    if (argument == u"--service")
        return &line.isService;
    if (argument == u"--trace-startup")
        return &line.tracesStartup;
    if (argument == u"--trace-frames")
        return &line.tracesFrames;
    return nullptr;
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    CommandLine line;
    for (const QString &argument : arguments) {
        if (bool *option = optionOf(line, argument))
            *option = true;
        else if (isOwnLink(argument))
            line.links.append(QUrl(argument));
        else if (line.unknown.isNull())
            line.unknown = argument.isNull() ? QLatin1String("") : argument;
    }
    return line;
}

QString usage()
{
    return QStringLiteral(
        "Usage: velto [OPTION]... [LINK]...\n"
        "\n"
        "Starts velto, or brings the one that runs to the front, and opens the links:\n"
        "  ltd.orbax.velto://new?text=TEXT  a new chat with TEXT as its draft\n"
        "  ltd.orbax.velto://chat/ID        a conversation\n"
        "\n"
        "  --service        start without a window, for the session bus\n"
        "  --trace-startup  print when the first frame was shown\n"
        "  --trace-frames   print at the end how long frames and typed keys took\n"
        "  -v, --version    print the version\n"
        "  -h, --help       print this\n");
}

} // namespace velto::shell
