// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/conversationcache.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace velto::chat;
namespace cache = velto::chat::conversationcache;

namespace
{

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

class ConversationCacheTest : public testing::Test
{
protected:
    QTemporaryDir home;
    QString file = home.filePath(QStringLiteral("velto/last-conversation.json"));

    void write(const QByteArray &bytes) const
    {
        QDir().mkpath(QFileInfo(file).path());
        QFile target(file);
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        target.write(bytes);
    }
    [[nodiscard]] QJsonObject written() const
    {
        QFile source(file);
        EXPECT_TRUE(source.open(QIODevice::ReadOnly));
        return QJsonDocument::fromJson(source.readAll()).object();
    }
    [[nodiscard]] ToolCall roundTrip(const ToolCall &call) const
    {
        cache::save({newMessage(ChatMessage::Role::Assistant, {toolPart(call)})}, {}, file);
        return std::get<ToolCall>(cache::load(file)->messages.at(0).parts.at(0).kind);
    }
};

} // namespace

TEST_F(ConversationCacheTest, keepsTheActivePath)
{
    const ChatMessage user = newMessage(ChatMessage::Role::User, {textPart(text("Grüße 🎈"))});
    const ChatMessage answer = newMessage(
        ChatMessage::Role::Assistant,
        {textPart(text("a")),
         toolPart({text("1"), text("search"), text("in"), text("out"), {}, ToolState::Completed}),
         textPart(text("b"))});
    cache::save({user, answer}, text("c1"), file);
    const auto loaded = cache::load(file);
    ASSERT_TRUE(loaded.has_value());
    EXPECT_EQ(loaded->conversationID, text("c1"));
    ASSERT_EQ(loaded->messages.size(), 2);
    EXPECT_EQ(loaded->messages[0].role, ChatMessage::Role::User);
    EXPECT_EQ(loaded->messages[0].plainText(), text("Grüße 🎈"));
    EXPECT_NE(loaded->messages[0].id, user.id);
    EXPECT_EQ(loaded->messages[1].role, ChatMessage::Role::Assistant);
    ASSERT_EQ(loaded->messages[1].parts.size(), 3);
    EXPECT_EQ(loaded->messages[1].parts[1].kind, answer.parts[1].kind);
    EXPECT_FALSE(loaded->messages[1].branches.has_value());
    EXPECT_EQ(loaded->messages[1].activeBranchIndex, 0);
}

TEST_F(ConversationCacheTest, leavesBranchesOut)
{
    ChatMessage user = newMessage(ChatMessage::Role::User, {textPart(text("new"))});
    user.branches = QList<ChatBranch>{{QUuid::createUuid(), {textPart(text("old"))}, {}},
                                      {QUuid::createUuid(), user.parts, {}}};
    user.activeBranchIndex = 1;
    cache::save({user}, {}, file);
    const auto loaded = cache::load(file);
    EXPECT_EQ(loaded->messages[0].plainText(), text("new"));
    EXPECT_FALSE(loaded->messages[0].branches.has_value());
    EXPECT_EQ(written()[QLatin1StringView("messages")].toArray()[0].toObject().keys(),
              (QStringList{text("parts"), text("role")}));
}

TEST_F(ConversationCacheTest, writesTheKeysOfTheFormatAndLeavesAbsentOnesOut)
{
    cache::save({newMessage(ChatMessage::Role::Assistant,
                            {toolPart({.callID = text("1"), .name = text("search")})})},
                {}, file);
    const QJsonObject document = written();
    EXPECT_EQ(document.keys(), QStringList{text("messages")});
    const QJsonObject part = document[QLatin1StringView("messages")]
                                 .toArray()[0]
                                 .toObject()[QLatin1StringView("parts")]
                                 .toArray()[0]
                                 .toObject();
    EXPECT_EQ(part.keys(), (QStringList{text("kind"), text("toolCallID"), text("toolName")}));
    EXPECT_EQ(part[QLatin1StringView("kind")].toString(), text("tool"));
}

TEST_F(ConversationCacheTest, aRunningToolComesBackCompleted)
{
    EXPECT_EQ(roundTrip({.callID = text("1"), .name = text("t")}).state, ToolState::Completed);
}

TEST_F(ConversationCacheTest, aFailedToolComesBackFailed)
{
    const ToolCall call =
        roundTrip({text("1"), text("t"), text("in"), {}, text("no"), ToolState::Failed});
    EXPECT_EQ(call.state, ToolState::Failed);
    EXPECT_EQ(call.errorText, text("no"));
    EXPECT_EQ(call.inputJSON, text("in"));
}

TEST_F(ConversationCacheTest, aStoppedMessageKeepsItsNote)
{
    ChatMessage answer = newMessage(ChatMessage::Role::Assistant, {textPart(text("Some"))});
    appendStoppedNote(answer);
    cache::save({answer}, {}, file);
    EXPECT_EQ(cache::load(file)->messages[0].plainText(), text("Some\n\n_stopped_"));
}

TEST_F(ConversationCacheTest, anEmptyConversationLoadsAsAbsent)
{
    write(R"({"conversationID":"c1","messages":[]})");
    EXPECT_FALSE(cache::load(file).has_value());
}

TEST_F(ConversationCacheTest, aFileThatIsNotJSONIsIgnoredAndOverwrittenLater)
{
    for (const char *bytes :
         {"", "not json", "{", "[]", "{\"messages\":{}}", "{\"messages\":[{\"role\":\"user\"}]}"}) {
        write(bytes);
        EXPECT_FALSE(cache::load(file).has_value()) << bytes;
    }
    cache::save({newMessage(ChatMessage::Role::User, {textPart(text("a"))})}, {}, file);
    EXPECT_TRUE(cache::load(file).has_value());
}

TEST_F(ConversationCacheTest, aMissingFileLoadsAsAbsentAndCanBeCleared)
{
    EXPECT_FALSE(cache::load(file).has_value());
    cache::clear(file);
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(ConversationCacheTest, fillsWhatIsMissing)
{
    write(R"({"messages":[{"role":"robot","parts":[
        {"kind":"text"},{"kind":"tool"},{"kind":"picture","text":"x"}]}]})");
    const auto loaded = cache::load(file);
    ASSERT_TRUE(loaded.has_value());
    EXPECT_FALSE(loaded->conversationID.has_value());
    const ChatMessage &message = loaded->messages[0];
    EXPECT_EQ(message.role, ChatMessage::Role::Assistant);
    ASSERT_EQ(message.parts.size(), 3);
    EXPECT_EQ(std::get<QString>(message.parts[0].kind), QString());
    const auto &call = std::get<ToolCall>(message.parts[1].kind);
    EXPECT_EQ(call.name, text("tool"));
    EXPECT_FALSE(QUuid(call.callID).isNull());
    EXPECT_EQ(std::get<QString>(message.parts[2].kind), QString());
}

TEST_F(ConversationCacheTest, clearRemovesTheFile)
{
    cache::save({newMessage(ChatMessage::Role::User, {textPart(text("a"))})}, {}, file);
    ASSERT_TRUE(QFile::exists(file));
    cache::clear(file);
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(ConversationCacheTest, clearLeavesNothingOfAnInterruptedSave)
{
    write("{}");
    QFile half(file + QStringLiteral(".Ab12Cd"));
    QFile other(home.filePath(QStringLiteral("velto/other.json")));
    ASSERT_TRUE(half.open(QIODevice::WriteOnly) && other.open(QIODevice::WriteOnly));
    cache::clear(file);
    EXPECT_EQ(QFileInfo(file).dir().entryList(QDir::Files | QDir::Hidden),
              QStringList{text("other.json")});
}

TEST_F(ConversationCacheTest, onlyTheOwnerCanReadTheFile)
{
    cache::save({newMessage(ChatMessage::Role::User, {textPart(text("a"))})}, {}, file);
    const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther |
                        QFileDevice::WriteOther;
    EXPECT_FALSE(QFile::permissions(file) & others);
}

TEST_F(ConversationCacheTest, aFolderThatCannotBeMadeIsNoError)
{
    QFile blocker(home.filePath(QStringLiteral("velto")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    cache::save({newMessage(ChatMessage::Role::User, {textPart(text("a"))})}, {}, file);
    EXPECT_FALSE(cache::load(file).has_value());
}

TEST_F(ConversationCacheTest, liesInTheUsersApplicationData)
{
    EXPECT_EQ(cache::defaultFile(),
              QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                  text("/velto/last-conversation.json"));
}

TEST_F(ConversationCacheTest, isWholeHoweverOftenTheWriterIsKilled)
{
    int longer = 0;
    for (int round = 0; round < 200; ++round) {
        QProcess writer;
        writer.start(QStringLiteral(CACHE_WRITER), {file});
        ASSERT_TRUE(writer.waitForReadyRead());
        const qint64 roundTime = writer.readLine().trimmed().toLongLong();
        ASSERT_GT(roundTime, 0);
        // Lets the kill land at another moment of the writer's round each time.
        QElapsedTimer moment;
        moment.start();
        while (moment.nsecsElapsed() < roundTime * (round % 40) / 30) {
        }
        writer.kill();
        ASSERT_TRUE(writer.waitForFinished());
        const auto loaded = cache::load(file);
        ASSERT_TRUE(loaded.has_value()) << "round " << round;
        const bool isLonger = loaded->conversationID == text("longer");
        ASSERT_EQ(loaded->messages.size(), isLonger ? 200 : 100);
        longer += isLonger ? 1 : 0;
    }
    EXPECT_GT(longer, 0) << "no kill came after a second write, so nothing was put to the test";
    const QStringList left = QFileInfo(file).dir().entryList(QDir::Files | QDir::Hidden);
    EXPECT_LE(left.size(), 2) << "half-written files pile up: " << qPrintable(left.join(u' '));
}
