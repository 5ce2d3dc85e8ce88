// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/desktoplauncher.h"
#include "platform/urlopener.h"
#include "support/coroutinetest.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

namespace velto::platform
{
namespace
{

using namespace std::chrono_literals;

class RecordingLauncher final : public URLLauncher
{
public:
    explicit RecordingLauncher(QList<QUrl> &launched)
        : m_launched(launched)
    {}
    QCoro::Task<bool> launch(QUrl url) override
    {
        m_launched.append(url);
        co_return true;
    }

private:
    QList<QUrl> &m_launched;
};

class URLOpenerPolicy : public testing::Test
{
protected:
    bool open(const char *url) { return test::await(opener.openURL(QUrl(QString::fromUtf8(url)))); }

    QList<QUrl> launched;
    URLOpener opener{std::make_unique<RecordingLauncher>(launched)};
};

TEST_F(URLOpenerPolicy, opensWebAndMailLinks)
{
    EXPECT_TRUE(open("http://127.0.0.1:7717/a?b=c"));
    EXPECT_TRUE(open("HTTPS://example.org/"));
    EXPECT_TRUE(open("mailto:someone@example.org"));
    EXPECT_EQ(launched.size(), 3);
}

TEST_F(URLOpenerPolicy, refusesEveryOtherScheme)
{
    for (const char *url :
         {"file:///etc/passwd", "javascript:alert(1)", "data:text/html,x", "ftp://example.org/",
          "smb://host/share", "vscode://x", "/etc/passwd", "example.org", "", "http:///path",
          "http:", "--help", "xdg-open:x", "httpx://example.org/"}) {
        EXPECT_FALSE(open(url)) << url;
    }
    EXPECT_TRUE(launched.isEmpty());
}

TEST_F(URLOpenerPolicy, ownSchemeGoesToItsHandlerOnly)
{
    EXPECT_FALSE(open("ltd.orbax.velto://new"));
    QList<QUrl> handled;
    opener.setOwnSchemeHandler([&](const QUrl &url) { handled.append(url); });
    EXPECT_TRUE(open("ltd.orbax.velto://new?text=hi"));
    ASSERT_EQ(handled.size(), 1);
    EXPECT_EQ(handled.first().host(), u"new");
    EXPECT_TRUE(launched.isEmpty());
}

/// A machine of which the test decides which programs it has.
class DesktopLauncherTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        qputenv("PATH", folder.path().toUtf8());
        qunsetenv("BROWSER");
    }
    void TearDown() override
    {
        qputenv("PATH", path);
        qunsetenv("BROWSER");
    }

    void install(const QString &program, const QByteArray &script)
    {
        QFile file(folder.filePath(program));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script + "\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QByteArray content(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QByteArray record(const QByteArray &name, const QByteArray &then = {}) const
    {
        return "printf '%s\\n' \"$#\" \"$@\" > " +
               folder.filePath(QString::fromUtf8(name)).toUtf8() + "\n" + then;
    }
    bool launch(std::chrono::milliseconds patience = 15s)
    {
        DesktopLauncher launcher(patience);
        return test::await(launcher.launch(url));
    }

    const QByteArray path = qgetenv("PATH");
    const QUrl url{QStringLiteral("http://127.0.0.1:1/x?a=b%20c&d=%2B;$(touch%20pwned)'")};
    QTemporaryDir folder;
};

TEST_F(DesktopLauncherTest, bareMachineReportsAFailure)
{
    EXPECT_FALSE(launch());
}

TEST_F(DesktopLauncherTest, xdgOpenGetsTheEncodedURLAsItsOneArgument)
{
    install(QStringLiteral("xdg-open"), record("args"));
    EXPECT_TRUE(launch());
    EXPECT_EQ(content(QStringLiteral("args")), "1\n" + url.toEncoded() + "\n");
}

TEST_F(DesktopLauncherTest, xdgOpenThatFindsNoBrowserIsAFailure)
{
    install(QStringLiteral("xdg-open"), "exit 3");
    EXPECT_FALSE(launch());
}

TEST_F(DesktopLauncherTest, xdgOpenThatCrashesIsAFailure)
{
    install(QStringLiteral("xdg-open"), "kill -SEGV $$");
    EXPECT_FALSE(launch());
}

TEST_F(DesktopLauncherTest, xdgOpenThatCannotBeStartedIsAFailure)
{
    install(QStringLiteral("xdg-open"), "");
    QFile file(folder.filePath(QStringLiteral("xdg-open")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("#!/nonexistent/interpreter\n");
    file.close();
    EXPECT_FALSE(launch());
}

TEST_F(DesktopLauncherTest, browserVariableHelpsWhereXdgOpenFails)
{
    install(QStringLiteral("xdg-open"), "exit 3");
    install(QStringLiteral("mybrowser"), record("args"));
    qputenv("BROWSER", "missing:mybrowser --new-window");
    EXPECT_TRUE(launch());
    EXPECT_EQ(content(QStringLiteral("args")), "2\n--new-window\n" + url.toEncoded() + "\n");
}

TEST_F(DesktopLauncherTest, browserVariableMaySayWhereTheURLGoes)
{
    install(QStringLiteral("mybrowser"), record("args"));
    qputenv("BROWSER", "mybrowser --url=%s --last");
    EXPECT_TRUE(launch());
    EXPECT_EQ(content(QStringLiteral("args")), "2\n--url=" + url.toEncoded() + "\n--last\n");
}

TEST_F(DesktopLauncherTest, browserVariableWithoutAProgramIsAFailure)
{
    qputenv("BROWSER", "missing: :also-missing %s");
    EXPECT_FALSE(launch());
}

TEST_F(DesktopLauncherTest, browserInTheForegroundCountsAsOpenedAndLivesOn)
{
    // Reads the pipe until the test writes to it.
    const QByteArray pipe = folder.filePath(QStringLiteral("pipe")).toUtf8();
    ASSERT_EQ(::system(("/usr/bin/mkfifo " + pipe).constData()), 0);
    install(QStringLiteral("xdg-open"),
            "echo $$ > " + folder.filePath(QStringLiteral("pid")).toUtf8() + "\nread line < " +
                pipe + "\necho $line > " + folder.filePath(QStringLiteral("end")).toUtf8());
    EXPECT_TRUE(launch(50ms));
    ASSERT_TRUE(test::waitUntil([&] { return content(QStringLiteral("pid")).endsWith('\n'); }));
    const auto pid = static_cast<pid_t>(content(QStringLiteral("pid")).trimmed().toInt());
    EXPECT_EQ(::kill(pid, 0), 0);
    EXPECT_EQ(::getsid(pid), pid) << "a Ctrl-C for us must not end the browser";

    QFile writer(QString::fromUtf8(pipe));
    ASSERT_TRUE(writer.open(QIODevice::WriteOnly));
    writer.write("finished\n");
    writer.close();
    EXPECT_TRUE(test::waitUntil([&] { return content(QStringLiteral("end")) == "finished\n"; }));
    EXPECT_TRUE(test::waitUntil([&] { return ::kill(pid, 0) != 0; })) << "nobody reaped it";
}

TEST_F(DesktopLauncherTest, whatTheBrowserPrintsDoesNotReachOurOutput)
{
    install(QStringLiteral("xdg-open"), "echo \"$1\"; echo \"$1\" >&2");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const bool opened = launch();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(opened);
}

} // namespace
} // namespace velto::platform
