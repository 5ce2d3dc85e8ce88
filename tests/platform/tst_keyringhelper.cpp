// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "keyring/libsecretstore.h"
#include "keyringdaemon.h"
#include "platform/linux/helpersecretstore.h"
#include "platform/secretmessage.h"
#include "processes.h"
#include "support/coroutinetest.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

#include <grp.h>
#include <unistd.h>

namespace velto::platform
{
namespace
{

using Operation = SecretRequest::Operation;

const QString helper = QStringLiteral(VELTO_KEYRING_HELPER);
const QString service = QStringLiteral("ltd.orbax.velto");
const QString account = QStringLiteral("refresh_token");

QByteArray request(Operation operation, const QString &value = {})
{
    return *messageOf(SecretRequest{operation, service, account, value});
}

/// The program itself, as its client speaks to it.
class KeyringHelperTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(qgetenv("VELTO_TEST_KEYRING"), "unlocked") << "run through ctest";
        test::restartKeyring();
    }

    void start()
    {
        program.start(helper, QStringList());
        ASSERT_TRUE(program.waitForStarted());
    }
    [[nodiscard]] bool ended()
    {
        return test::waitUntil([this] { return program.state() == QProcess::NotRunning; });
    }
    /// Starts the program, gives it all of its input and waits for its end.
    QByteArray outputFor(const QByteArray &input)
    {
        start();
        program.write(input);
        program.closeWriteChannel();
        EXPECT_TRUE(ended());
        return program.readAllStandardOutput();
    }
    /// As `outputFor`, the input left open.
    std::optional<SecretReply> replyTo(const QByteArray &message)
    {
        start();
        program.write(message);
        EXPECT_TRUE(ended());
        EXPECT_EQ(program.exitCode(), 0);
        return secretReply(program.readAllStandardOutput());
    }

    QProcess program;
};

TEST_F(KeyringHelperTest, answersOneRequestAndEnds)
{
    const QString token = QStringLiteral("rt-🔑");
    EXPECT_EQ(replyTo(request(Operation::Save, token)), SecretReply());
    EXPECT_EQ(replyTo(request(Operation::Load)), (SecretReply{0, token}));
    EXPECT_EQ(replyTo(request(Operation::Remove)), SecretReply());
    EXPECT_EQ(replyTo(request(Operation::Load)), SecretReply());
}

TEST_F(KeyringHelperTest, waitsForTheRestOfARequest)
{
    const QByteArray message = request(Operation::Load);
    start();
    for (const char byte : message) {
        program.write(&byte, 1);
        program.waitForBytesWritten();
    }
    EXPECT_TRUE(ended());
    EXPECT_TRUE(secretReply(program.readAllStandardOutput()));
}

TEST_F(KeyringHelperTest, endsWithoutAReplyToWhatIsNoRequest)
{
    QByteArray tooLong(4, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(longestSecretMessage), tooLong.data());
    for (const QByteArray &input : {QByteArray(), QByteArray("garbage that is no request"), tooLong,
                                    request(Operation::Load).chopped(1),
                                    request(Operation::Load) + 'x', *messageOf(SecretReply{})}) {
        EXPECT_EQ(outputFor(input), "");
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 1);
    }
}

TEST_F(KeyringHelperTest, anEntryLongerThanAMessageIsAFailure)
{
    keyring::LibsecretStore other;
    ASSERT_TRUE(other.save(service, account, QString(2 << 20, u'x')));
    EXPECT_EQ(replyTo(request(Operation::Load)), (SecretReply{-1, {}}));
    EXPECT_EQ(replyTo(request(Operation::Remove)), SecretReply());
}

/// While the desktop asks its user to unlock the keyring.
class PromptingHelper : public KeyringHelperTest
{
protected:
    void SetUp() override
    {
        KeyringHelperTest::SetUp();
        ASSERT_EQ(replyTo(request(Operation::Save, QStringLiteral("token"))), SecretReply());
        test::lockKeyring();
        prompter = std::make_unique<test::SilentPrompter>();
    }
    void waitForPrompt()
    {
        ASSERT_TRUE(test::waitUntil([this] { return prompter->wasAsked; }));
    }

    std::unique_ptr<test::SilentPrompter> prompter;
};

TEST_F(PromptingHelper, givesUpWhenItsInputCloses)
{
    start();
    program.write(request(Operation::Load));
    waitForPrompt();
    EXPECT_EQ(program.state(), QProcess::Running);
    program.closeWriteChannel();
    ASSERT_TRUE(ended());
    EXPECT_EQ(secretReply(program.readAllStandardOutput()),
              (SecretReply{base::KeychainError::Locked, {}}));
}

TEST_F(PromptingHelper, endsWhenItsClientIsKilled)
{
    program.start(QStringLiteral(VELTO_SECRET_CALLER), {helper});
    waitForPrompt();
    const QList<qint64> started = test::childrenOf(program.processId());
    ASSERT_EQ(started.size(), 1);
    EXPECT_TRUE(test::isRunning(started.first()));
    program.kill();
    ASSERT_TRUE(ended());
    EXPECT_TRUE(test::waitUntil([&] { return !test::isRunning(started.first()); }));
}

TEST_F(PromptingHelper, itsCommandLineIsItsNameAlone)
{
    start();
    program.write(request(Operation::Save, QStringLiteral("rt-0123456789")));
    waitForPrompt();
    QFile commandLine(QStringLiteral("/proc/%1/cmdline").arg(program.processId()));
    ASSERT_TRUE(commandLine.open(QFile::ReadOnly));
    EXPECT_EQ(commandLine.readAll(), helper.toUtf8() + '\0');
    program.closeWriteChannel();
    EXPECT_TRUE(ended());
}

/// Runs programs as a user who isn't root, whoever runs the tests.
class AsAUser : public KeyringHelperTest
{
protected:
    void SetUp() override
    {
        KeyringHelperTest::SetUp();
        const QString copy = folder.filePath(QStringLiteral("velto-keyring"));
        ASSERT_TRUE(QFile::copy(helper, copy));
        constexpr auto readable = QFile::ReadOther | QFile::ExeOther;
        ASSERT_TRUE(
            QFile::setPermissions(folder.path(), QFile::permissions(folder.path()) | readable));
        ASSERT_TRUE(QFile::setPermissions(copy, QFile::permissions(copy) | readable));
        constexpr uid_t nobody = 65534;
        user = getuid() == 0 ? nobody : getuid();
        // The folders above it may be closed to this user.
        program.setChildProcessModifier([path = folder.path().toUtf8()] {
            const bool isThere = chdir(path.constData()) == 0;
            const bool isUser = getuid() != 0 || (setgroups(0, nullptr) == 0 &&
                                                  setgid(nobody) == 0 && setuid(nobody) == 0);
            if (!isThere || !isUser)
                _exit(127);
        });
    }
    /// To whom the system says the memory of the running program belongs.
    [[nodiscard]] uint ownerOfMemory() const
    {
        return QFileInfo(QStringLiteral("/proc/%1/mem").arg(program.processId())).ownerId();
    }

    [[nodiscard]] bool runs(const QByteArray &name) const
    {
        QFile file(QStringLiteral("/proc/%1/comm").arg(program.processId()));
        return file.open(QFile::ReadOnly) && file.readAll() == name + '\n';
    }

    QTemporaryDir folder;
    uint user = 0;
};

TEST_F(AsAUser, theMemoryOfTheHelperIsNotTheirs)
{
    program.start(QStringLiteral("cat"), QStringList());
    ASSERT_TRUE(program.waitForStarted()) << qPrintable(program.errorString());
    EXPECT_TRUE(test::waitUntil([this] { return ownerOfMemory() == user; })) << "as usual";
    program.closeWriteChannel();
    ASSERT_TRUE(ended());

    program.start(QStringLiteral("sh"),
                  {QStringLiteral("-c"), QStringLiteral("exec ./velto-keyring")});
    ASSERT_TRUE(program.waitForStarted());
    // Until it is started, the process is the one of the tests, and may be root's.
    EXPECT_TRUE(test::waitUntil([this] { return runs("velto-keyring"); }))
        << program.readAllStandardError().constData();
    EXPECT_TRUE(test::waitUntil([this] { return ownerOfMemory() == 0; }));
    EXPECT_EQ(program.state(), QProcess::Running);
    program.closeWriteChannel();
    EXPECT_TRUE(ended());
}

TEST_F(KeyringHelperTest, clientWithoutAnEventLoopGetsTheSecret)
{
    ASSERT_EQ(replyTo(request(Operation::Save, QStringLiteral("token"))), SecretReply());
    program.start(QStringLiteral(VELTO_SECRET_CALLER), {helper});
    ASSERT_TRUE(ended());
    EXPECT_EQ(program.readAllStandardOutput(), "token\n");
}

} // namespace
} // namespace velto::platform
