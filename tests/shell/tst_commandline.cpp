// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/commandline.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace velto::shell
{

namespace
{

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

struct Case
{
    const char *what;
    QStringList arguments;
    CommandLine expected;
};

const QList<Case> cases{
    {"nothing", {}, {}},
    {"the service", {text("--service")}, {.isService = true}},
    {"traces",
     {text("--trace-startup"), text("--trace-frames")},
     {.tracesStartup = true, .tracesFrames = true}},
    {"help", {text("-h")}, {.showsHelp = true}},
    {"help in full", {text("--help")}, {.showsHelp = true}},
    {"version", {text("-v")}, {.showsVersion = true}},
    {"version in full", {text("--version")}, {.showsVersion = true}},
    {"links in order, whatever the case of their scheme",
     {text("ltd.orbax.velto://chat/b"), text("LTD.Orbax.velto://new?text=a%20b")},
     {.links = {QUrl(text("ltd.orbax.velto://chat/b")),
                QUrl(text("ltd.orbax.velto://new?text=a%20b"))}}},
    {"a link that leads nowhere is one all the same",
     {text("ltd.orbax.velto:")},
     {.links = {QUrl(text("ltd.orbax.velto:"))}}},
    {"another scheme", {text("https://example.com")}, {.unknown = text("https://example.com")}},
    {"a longer scheme",
     {text("ltd.orbax.velto2://new")},
     {.unknown = text("ltd.orbax.velto2://new")}},
    {"the first of several unknown ones", {text("--x"), text("y")}, {.unknown = text("--x")}},
    {"an empty argument", {text("")}, {.unknown = text("")}},
};

} // namespace

TEST(CommandLineTest, isReadByTheseRules)
{
    for (const Case &example : cases) {
        const CommandLine line = parseCommandLine(example.arguments);
        EXPECT_EQ(line, example.expected) << example.what;
        EXPECT_EQ(line.unknown.isNull(), example.expected.unknown.isNull()) << example.what;
    }
}

TEST(CommandLineTest, everyOptionInTheUsageIsKnown)
{
    const QStringList words = usage().split(QRegularExpression(text("[\\s,]+")));
    QStringList options;
    for (const QString &word : words) {
        if (word.startsWith(u'-'))
            options.append(word);
    }
    EXPECT_EQ(options.size(), 7);
    EXPECT_TRUE(parseCommandLine(options).unknown.isNull());
}

} // namespace velto::shell
