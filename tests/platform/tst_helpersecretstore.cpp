// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/helpersecretstore.h"

#include "platform/secretmessage.h"
#include "processes.h"
#include "support/coroutinetest.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace velto::platform
{
namespace
{

using base::KeychainError;
using testing::HasSubstr;
using Loaded = base::Result<std::optional<QString>>;

const QString service = QStringLiteral("ltd.orbax.velto");
const QString account = QStringLiteral("refresh_token");
const QString secret = QStringLiteral("rt-0123456789abcdef");
const base::Failure unknown(KeychainError{KeychainError::Unknown});

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write a file of the test");
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

/// With a helper that is a few lines of shell, started in a folder of its own. Its file `reply` is
/// the reply with `secret`.
class HelperSecretStoreTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        write(path(QStringLiteral("reply")), *messageOf(SecretReply{0, secret}));
    }
    /// However a call ended, no process of it may be left, not even one to wait for.
    void TearDown() override
    {
        EXPECT_THAT(test::childrenOf(QCoreApplication::applicationPid()), testing::IsEmpty());
    }

    [[nodiscard]] QString path(const QString &name) const { return folder.filePath(name); }

    [[nodiscard]] HelperSecretStore helper(const QByteArray &lines) const
    {
        const QString program = path(QStringLiteral("helper"));
        write(program, "#!/bin/sh\ncd \"${0%/*}\"\n" + lines + '\n');
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return HelperSecretStore(program);
    }

    /// What a call gives, and what it writes to the log.
    [[nodiscard]] std::pair<Loaded, std::string> load(SecretStore &store) const
    {
        testing::internal::CaptureStdout();
        Loaded loaded = store.load(service, account);
        return {std::move(loaded), testing::internal::GetCapturedStdout()};
    }

    void expectFailure(const QByteArray &lines, const char *logged) const
    {
        HelperSecretStore store = helper(lines);
        const auto [loaded, log] = load(store);
        ASSERT_FALSE(loaded);
        EXPECT_EQ(loaded.error(), unknown);
        EXPECT_THAT(log, HasSubstr(logged));
        EXPECT_THAT(log, testing::Not(HasSubstr(secret.toStdString())));
    }

    QTemporaryDir folder;
};

TEST_F(HelperSecretStoreTest, givesTheValueOfTheReplyAndLogsNothing)
{
    HelperSecretStore store = helper("cat reply");
    const auto [loaded, log] = load(store);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(*loaded, secret);
    EXPECT_EQ(log, "");
}

TEST_F(HelperSecretStoreTest, keepsTheNumberOfAFailure)
{
    for (const qint32 status :
         {qint32(KeychainError::Locked), qint32(KeychainError::NoService), 19, -1}) {
        write(path(QStringLiteral("reply")), *messageOf(SecretReply{status, {}}));
        HelperSecretStore store = helper("cat reply");
        const base::Failure failure(KeychainError{status});
        EXPECT_EQ(store.load(service, account).error(), failure);
        EXPECT_EQ(store.save(service, account, secret).error(), failure);
        EXPECT_EQ(store.remove(service, account).error(), failure);
    }
}

TEST_F(HelperSecretStoreTest, requestsGoToTheInput)
{
    const SecretRequest request{SecretRequest::Operation::Save, service, account,
                                secret + QString(600000, u'京').left(300000)};
    const QByteArray size = QByteArray::number(messageOf(request)->size());
    HelperSecretStore store = helper("head -c " + size + " >request; cat reply");
    ASSERT_TRUE(store.save(service, account, request.value));
    EXPECT_EQ(secretRequest(read(path(QStringLiteral("request")))), request);
}

TEST_F(HelperSecretStoreTest, inputStaysOpenUntilTheReply)
{
    // What it reads after the request ends with the reply, not before.
    HelperSecretStore store = helper("cat >rest & reader=$!; cat reply; wait $reader; touch ended");
    EXPECT_TRUE(load(store).first);
    EXPECT_TRUE(QFile::exists(path(QStringLiteral("ended"))));
}

TEST_F(HelperSecretStoreTest, missingHelper)
{
    HelperSecretStore store(path(QStringLiteral("nothing")));
    const auto [loaded, log] = load(store);
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error(), unknown);
    EXPECT_THAT(log, HasSubstr("nothing could not be started: No such file or directory"));
}

TEST_F(HelperSecretStoreTest, helperThatMayNotBeRun)
{
    HelperSecretStore store(path(QStringLiteral("reply")));
    const auto [loaded, log] = load(store);
    ASSERT_FALSE(loaded);
    EXPECT_THAT(log, HasSubstr("could not be started: Permission denied"));
}

TEST_F(HelperSecretStoreTest, nothingIsSearchedFor)
{
    HelperSecretStore store(QStringLiteral("true"));
    EXPECT_THAT(load(store).second, HasSubstr("true could not be started"));
}

TEST_F(HelperSecretStoreTest, helperThatCrashes)
{
    expectFailure("kill -SEGV $$", "ended without an answer (signal 11)");
}

TEST_F(HelperSecretStoreTest, helperThatEndsWithoutAnAnswer)
{
    expectFailure("exit 3", "ended without an answer (code 3)");
}

TEST_F(HelperSecretStoreTest, garbage)
{
    expectFailure("echo this is no message", "gave an answer that can't be read");
}

TEST_F(HelperSecretStoreTest, garbageWithoutEnd)
{
    expectFailure("exec cat /dev/zero", "gave an answer that can't be read");
}

TEST_F(HelperSecretStoreTest, messageThatIsNoReply)
{
    expectFailure("printf '\\000\\000\\000\\001x'", "gave an answer that can't be read");
}

TEST_F(HelperSecretStoreTest, somethingAfterTheReply)
{
    expectFailure("cat reply reply", "gave an answer that can't be read");
}

TEST_F(HelperSecretStoreTest, halfAReply)
{
    expectFailure("head -c 20 reply; exit 4", "ended in the middle of its answer (code 4)");
    expectFailure("head -c 2 reply", "ended in the middle of its answer (code 0)");
}

TEST_F(HelperSecretStoreTest, helperThatClosesItsStreamsAndStays)
{
    expectFailure("exec <&- >&-; exec sleep 1000", "ended without an answer");
}

TEST_F(HelperSecretStoreTest, helperThatDoesNotEndAfterItsReply)
{
    HelperSecretStore store = helper("cat reply; exec sleep 1000");
    const auto [loaded, log] = load(store);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(*loaded, secret);
}

TEST_F(HelperSecretStoreTest, helperThatDoesNotListenEndsNothing)
{
    // A request that no buffer takes whole: its writer meets a closed end.
    HelperSecretStore store = helper("exit 5");
    const auto saved = store.save(service, account, QString(900000, u'x'));
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error(), unknown);
    HelperSecretStore answering = helper("cat reply");
    EXPECT_TRUE(answering.save(service, account, QString(900000, u'x')));
}

TEST_F(HelperSecretStoreTest, megabytesAreRefusedAndNothingIsStarted)
{
    HelperSecretStore store = helper("touch started; cat reply");
    testing::internal::CaptureStdout();
    const auto saved = store.save(service, account, QString(3 << 20, u'x'));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[SecretStore] a secret is too long to be kept\n");
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error(), unknown);
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("started"))));
}

TEST_F(HelperSecretStoreTest, secretsAreInNoArgumentAndNoVariable)
{
    HelperSecretStore store = helper("cat /proc/$$/cmdline /proc/$$/environ >seen; cat reply");
    ASSERT_TRUE(store.save(service, account, secret));
    const QByteArray seen = read(path(QStringLiteral("seen")));
    EXPECT_TRUE(seen.contains("/helper")) << "the command line";
    EXPECT_TRUE(seen.contains("PATH=")) << "the environment";
    for (const QString &text : {secret, service, account})
        EXPECT_FALSE(seen.contains(text.toUtf8())) << qPrintable(text);
}

TEST_F(HelperSecretStoreTest, noFileOfOursIsOpenInTheHelper)
{
    // One that doesn't close by itself.
    const int leaking = open("/dev/null", O_RDONLY); // NOLINT
    ASSERT_GE(leaking, 3);
    HelperSecretStore store = helper("(ls -l /proc/$$/fd >open); cat reply");
    EXPECT_TRUE(load(store).first);
    close(leaking);
    int streams = 0;
    for (const QByteArray &line : read(path(QStringLiteral("open"))).split('\n')) {
        const qsizetype arrow = line.indexOf(" -> ");
        if (arrow < 0)
            continue;
        const int number = line.mid(line.lastIndexOf(' ', arrow - 1) + 1).split(' ')[0].toInt();
        if (number <= STDERR_FILENO)
            ++streams;
        else // the shell's own
            EXPECT_TRUE(line.endsWith("/helper")) << line.constData();
        EXPECT_EQ(number == STDIN_FILENO || number == STDOUT_FILENO, line.contains("socket:"))
            << line.constData();
    }
    EXPECT_EQ(streams, 3);
}

TEST_F(HelperSecretStoreTest, callsLeaveNoFileOpen)
{
    const auto openFiles = [] {
        return QDir(QStringLiteral("/proc/self/fd"))
            .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
            .size();
    };
    HelperSecretStore store = helper("cat reply");
    const auto before = openFiles();
    for (int call = 0; call < 5; ++call)
        EXPECT_TRUE(load(store).first);
    HelperSecretStore missing(path(QStringLiteral("nothing")));
    EXPECT_FALSE(load(missing).first);
    EXPECT_LE(openFiles(), before + 1) << "the second store's own";
}

TEST_F(HelperSecretStoreTest, endOfTheSessionDoesNotStopTheHelper)
{
    HelperSecretStore store = helper("kill -TERM $$; kill -INT $$; kill -HUP $$; cat reply");
    EXPECT_TRUE(load(store).first);
}

TEST_F(HelperSecretStoreTest, helperIsInNoProcessGroupOfOurs)
{
    HelperSecretStore store =
        helper("[ $(ps -o sid= -p $$) = $$ ] && [ $(ps -o pgid= -p $$) = $$ ] && cat reply");
    EXPECT_TRUE(load(store).first);
}

TEST_F(HelperSecretStoreTest, worksBesideClosedStandardStreams)
{
    HelperSecretStore store = helper("cat reply");
    const int input = dup(STDIN_FILENO);
    const int output = dup(STDOUT_FILENO);
    close(STDIN_FILENO);
    close(STDOUT_FILENO);
    const Loaded loaded = store.load(service, account);
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    close(input);
    close(output);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(*loaded, secret);
}

TEST_F(HelperSecretStoreTest, abandonedBeforeACallItFailsAtOnceAndStartsNothing)
{
    HelperSecretStore store = helper("touch started; cat reply");
    store.abandon();
    store.abandon();
    EXPECT_FALSE(store.load(service, account));
    EXPECT_FALSE(store.save(service, account, secret));
    EXPECT_FALSE(store.remove(service, account));
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("started"))));
}

TEST_F(HelperSecretStoreTest, abandonedAfterACallItKeepsWhatWasGiven)
{
    HelperSecretStore store = helper("cat reply");
    const Loaded loaded = load(store).first;
    store.abandon();
    EXPECT_EQ(**loaded, secret);
    EXPECT_FALSE(store.load(service, account));
}

/// A call in a thread of its own whose helper has begun, which it tells by a file.
class RunningCall : public HelperSecretStoreTest
{
protected:
    void begin(const QByteArray &lines)
    {
        store = std::make_unique<HelperSecretStore>(helper("touch begun\n" + lines));
        thread = std::thread([this, called = store.get()] {
            loaded = called->load(service, account);
            done = true;
        });
        ASSERT_TRUE(
            test::waitUntil([this] { return QFile::exists(path(QStringLiteral("begun"))); }));
        EXPECT_FALSE(done);
    }
    void TearDown() override
    {
        if (!test::waitUntil([this] { return done.load(); }))
            qFatal("watchdog: the call did not return");
        thread.join();
        HelperSecretStoreTest::TearDown();
    }

    std::unique_ptr<HelperSecretStore> store;
    std::thread thread;
    std::optional<Loaded> loaded;
    std::atomic<bool> done = false;
};

TEST_F(RunningCall, closesTheInputWhenAbandonedAndTakesTheAnswer)
{
    begin("cat >request; cat reply");
    store->abandon();
    ASSERT_TRUE(test::waitUntil([this] { return done.load(); }));
    EXPECT_EQ(**loaded, secret);
}

TEST_F(RunningCall, killsAHelperThatHangsWhenAbandoned)
{
    begin("exec sleep 1000");
    QElapsedTimer timer;
    timer.start();
    store->abandon();
    ASSERT_TRUE(test::waitUntil([this] { return done.load(); }));
    EXPECT_LT(timer.elapsed(), 2000) << "the patience of whoever ends the program";
    EXPECT_EQ(loaded->error(), unknown);
}

TEST_F(RunningCall, outlivesItsStore)
{
    begin("cat >request; cat reply");
    store->abandon();
    store.reset();
    ASSERT_TRUE(test::waitUntil([this] { return done.load(); }));
    EXPECT_EQ(**loaded, secret);
}

TEST_F(RunningCall, doesNotHinderAnother)
{
    begin("[ -e second ] && cat reply && exit\ntouch second; cat >request");
    ASSERT_TRUE(test::waitUntil([this] { return QFile::exists(path(QStringLiteral("second"))); }));
    const Loaded other = store->load(service, account);
    ASSERT_TRUE(other);
    EXPECT_EQ(*other, secret);
    EXPECT_FALSE(done);
    store->abandon();
}

TEST_F(HelperSecretStoreTest, abandoningEndsTheCallsOfAllThreads)
{
    HelperSecretStore store = helper("cat >/dev/null");
    std::atomic<int> failed = 0;
    std::vector<std::thread> threads;
    for (int call = 0; call < 4; ++call)
        threads.emplace_back([&] { failed += store.load(service, account) ? 0 : 1; });
    store.abandon();
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(failed, 4);
}

TEST(KeyringHelper, isTheOneBesideTheProgramOrWhereAnInstallationHasIt)
{
    const QTemporaryDir folder;
    const QString programs = folder.filePath(QStringLiteral("bin"));
    const QString beside = programs + QStringLiteral("/velto-keyring");
    ASSERT_TRUE(QDir().mkpath(programs));
    EXPECT_EQ(keyringHelper(programs),
              QDir::cleanPath(programs + QStringLiteral("/" VELTO_INSTALLED_KEYRING_HELPER)));
    write(beside, "no program");
    EXPECT_NE(keyringHelper(programs), beside);
    QFile::setPermissions(beside, QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(keyringHelper(programs), beside);
}

} // namespace
} // namespace velto::platform
