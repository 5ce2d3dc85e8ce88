// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/secretmessage.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>
#include <QtEndian>

#include <gtest/gtest.h>

namespace velto::platform
{
namespace
{

using Operation = SecretRequest::Operation;

const QStringList oddTexts{
    QString(),
    QStringLiteral("rt-Zürich-東京-🔑"),
    QStringLiteral("a") + QChar(0) + QStringLiteral("b"),
    QChar(0xfeff) + QStringLiteral("after a byte order mark"),
    QStringLiteral("two\nlines\r\n\"quoted\" \\"),
    QString(300000, u'x'),
    QString(100000, u'京'),
};

QByteArray framed(const QByteArray &body)
{
    QByteArray message(4, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(body.size()), message.data());
    return message + body;
}

QByteArray framed(const QCborMap &map)
{
    return framed(map.toCborValue().toCbor());
}

QCborMap loadMap()
{
    return {{QStringLiteral("operation"), QStringLiteral("load")},
            {QStringLiteral("service"), QByteArray("s")},
            {QStringLiteral("account"), QByteArray("a")}};
}

TEST(SecretMessage, requestsOfEveryKindArriveAsTheyWere)
{
    for (const Operation operation : {Operation::Save, Operation::Load, Operation::Remove}) {
        for (const QString &text : oddTexts) {
            const SecretRequest request{operation, text, QStringLiteral("account"),
                                        operation == Operation::Save ? text : QString()};
            const auto message = messageOf(request);
            ASSERT_TRUE(message);
            EXPECT_EQ(messageState(*message), MessageState::Complete);
            EXPECT_EQ(secretRequest(*message), request);
        }
    }
}

TEST(SecretMessage, onlySavingSendsAValue)
{
    const SecretRequest request{Operation::Load, QStringLiteral("s"), QStringLiteral("a"),
                                QStringLiteral("needless secret")};
    EXPECT_FALSE(messageOf(request)->contains("needless"));
}

TEST(SecretMessage, repliesArriveAsTheyWere)
{
    for (const QString &text : oddTexts) {
        const SecretReply reply{0, text};
        EXPECT_EQ(secretReply(*messageOf(reply)), reply);
    }
    for (const qint32 status : {0, -1, 19, -25291, -25308, INT32_MAX, INT32_MIN}) {
        const SecretReply reply{status, {}};
        EXPECT_EQ(secretReply(*messageOf(reply)), reply);
    }
}

TEST(SecretMessage, anEmptyValueIsNotAnAbsentOne)
{
    const auto empty = secretReply(*messageOf(SecretReply{0, QString()}));
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->value.has_value());
    EXPECT_FALSE(secretReply(*messageOf(SecretReply{}))->value.has_value());
}

TEST(SecretMessage, severalMegabytesAreNoMessage)
{
    const QString value(3 << 20, u'x');
    EXPECT_FALSE(messageOf(SecretRequest{Operation::Save, {}, {}, value}));
    EXPECT_FALSE(messageOf(SecretReply{0, value}));
}

TEST(SecretMessage, theLongestIsExactlyAsLongAsAllowed)
{
    const qsizetype around = messageOf(SecretReply{0, QString(1 << 17, u'x')})->size() - (1 << 17);
    const QString longest(longestSecretMessage - around, u'x');
    const auto message = messageOf(SecretReply{0, longest});
    ASSERT_TRUE(message);
    EXPECT_EQ(message->size(), longestSecretMessage);
    EXPECT_EQ(messageState(*message), MessageState::Complete);
    EXPECT_EQ(secretReply(*message)->value, longest);
    EXPECT_FALSE(messageOf(SecretReply{0, longest + u'x'}));
}

TEST(SecretMessage, everyBeginningIsIncompleteAndUnreadable)
{
    const SecretRequest request{Operation::Save, QStringLiteral("s"), QStringLiteral("a"),
                                QStringLiteral("value")};
    const QByteArray message = *messageOf(request);
    for (qsizetype size = 0; size < message.size(); ++size) {
        EXPECT_EQ(messageState(message.first(size)), MessageState::Incomplete) << size;
        EXPECT_FALSE(secretRequest(message.first(size))) << size;
    }
}

TEST(SecretMessage, moreThanOneMessageIsBroken)
{
    const QByteArray message = *messageOf(SecretReply{}) + 'x';
    EXPECT_EQ(messageState(message), MessageState::Broken);
    EXPECT_FALSE(secretReply(message));
}

TEST(SecretMessage, aLengthBeyondTheLimitIsBrokenBeforeTheRestHasCome)
{
    QByteArray length(4, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(longestSecretMessage - 4), length.data());
    EXPECT_EQ(messageState(length), MessageState::Incomplete);
    qToBigEndian(static_cast<quint32>(longestSecretMessage - 3), length.data());
    EXPECT_EQ(messageState(length), MessageState::Broken);
    EXPECT_EQ(messageState(QByteArray("\xff\xff\xff\xff")), MessageState::Broken);
    EXPECT_EQ(messageState(QByteArray("not a message")), MessageState::Broken);
}

TEST(SecretMessage, bodiesThatAreNoMapAreUnreadable)
{
    const QByteArray map = loadMap().toCborValue().toCbor();
    ASSERT_TRUE(secretRequest(framed(map)));
    EXPECT_FALSE(secretRequest(framed(map + '\0'))) << "something after the map";
    EXPECT_FALSE(secretRequest(framed(map.chopped(1))));
    EXPECT_FALSE(secretRequest(framed(QByteArray())));
    EXPECT_FALSE(secretRequest(framed(QByteArray("{\"operation\":\"load\"}"))));
    EXPECT_FALSE(secretRequest(framed(QCborValue(QCborArray{1, 2}).toCbor())));
    EXPECT_FALSE(secretRequest(framed(QByteArray(10000, '\x81')))) << "nested without end";
}

TEST(SecretMessage, requestsThatLackSomethingAreUnreadable)
{
    for (const QString &key :
         {QStringLiteral("operation"), QStringLiteral("service"), QStringLiteral("account")}) {
        QCborMap map = loadMap();
        map.remove(key);
        EXPECT_FALSE(secretRequest(framed(map))) << qPrintable(key);
        map.insert(key, 7);
        EXPECT_FALSE(secretRequest(framed(map))) << qPrintable(key);
    }
    QCborMap unknown = loadMap();
    unknown.insert(QStringLiteral("operation"), QStringLiteral("list"));
    EXPECT_FALSE(secretRequest(framed(unknown)));
    QCborMap save = loadMap();
    save.insert(QStringLiteral("operation"), QStringLiteral("save"));
    EXPECT_FALSE(secretRequest(framed(save))) << "nothing to save";
    save.insert(QStringLiteral("value"), QByteArray("\xff"));
    EXPECT_FALSE(secretRequest(framed(save))) << "not UTF-8";
}

TEST(SecretMessage, repliesWithoutANumberThatFitsAreUnreadable)
{
    const QString status = QStringLiteral("status");
    EXPECT_FALSE(secretReply(framed(QCborMap())));
    EXPECT_FALSE(secretReply(framed(QCborMap{{status, QStringLiteral("0")}})));
    EXPECT_FALSE(secretReply(framed(QCborMap{{status, qint64(INT32_MAX) + 1}})));
    EXPECT_FALSE(secretReply(framed(QCborMap{{status, qint64(INT32_MIN) - 1}})));
    EXPECT_FALSE(secretReply(
        framed(QCborMap{{status, 0}, {QStringLiteral("value"), QByteArray("\xc3\x28")}})));
    EXPECT_FALSE(
        secretReply(framed(QCborMap{{status, 0}, {QStringLiteral("value"), QCborValue(1)}})));
}

TEST(SecretMessage, whatElseAMapHoldsIsIgnored)
{
    QCborMap map = loadMap();
    map.insert(QStringLiteral("later"), 1);
    EXPECT_TRUE(secretRequest(framed(map)));
}

} // namespace
} // namespace velto::platform
