// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/linereader.h"

#include <QList>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using velto::chat::LineReader;

namespace
{

QList<QByteArray> linesOf(const QList<QByteArray> &pieces)
{
    LineReader reader;
    QList<QByteArray> lines;
    for (const QByteArray &piece : pieces) {
        reader.append(piece);
        while (const auto line = reader.next())
            lines.append(line->toByteArray());
    }
    if (const auto line = reader.rest())
        lines.append(line->toByteArray());
    return lines;
}

QList<QByteArray> singleBytes(const QByteArray &bytes)
{
    QList<QByteArray> pieces;
    for (const char byte : bytes)
        pieces.append(QByteArray(1, byte));
    return pieces;
}

} // namespace

TEST(LineReader, splitsAtLineFeed)
{
    EXPECT_EQ(linesOf({"one\ntwo\n"}), (QList<QByteArray>{"one", "two"}));
}

TEST(LineReader, splitsAtCarriageReturn)
{
    EXPECT_EQ(linesOf({"one\rtwo\r"}), (QList<QByteArray>{"one", "two"}));
}

TEST(LineReader, takesThePairAsOneTerminator)
{
    EXPECT_EQ(linesOf({"one\r\ntwo\r\n\r\n"}), (QList<QByteArray>{"one", "two", ""}));
}

TEST(LineReader, takesThePairAsOneTerminatorAcrossPieces)
{
    EXPECT_EQ(linesOf({"one\r", "\ntwo\r", "\n"}), (QList<QByteArray>{"one", "two"}));
}

TEST(LineReader, keepsALineFeedThatFollowsACompletePair)
{
    EXPECT_EQ(linesOf({"one\r\n\ntwo"}), (QList<QByteArray>{"one", "", "two"}));
    EXPECT_EQ(linesOf({"one\n\rtwo"}), (QList<QByteArray>{"one", "", "two"}));
}

TEST(LineReader, deliversALastLineWithoutTerminator)
{
    EXPECT_EQ(linesOf({"one\ntw", "o"}), (QList<QByteArray>{"one", "two"}));
    EXPECT_EQ(linesOf({"one\n"}), (QList<QByteArray>{"one"}));
    EXPECT_EQ(linesOf({"one\r", "\n"}), (QList<QByteArray>{"one"}));
}

TEST(LineReader, leavesBytesInsideACharacterTogether)
{
    const QByteArray text = "a\xe2\x82\xac"
                            "b\n";
    EXPECT_EQ(linesOf(singleBytes(text)), (QList<QByteArray>{"a\xe2\x82\xac"
                                                             "b"}));
}

TEST(LineReader, hasNothingToSayOfNothing)
{
    EXPECT_TRUE(linesOf({}).isEmpty());
    EXPECT_TRUE(linesOf({"", ""}).isEmpty());
}

RC_GTEST_PROP(LineReader, splitsTheSameHoweverTheBytesArrive, ())
{
    const auto text =
        *rc::gen::container<std::string>(rc::gen::element('a', 'b', '\n', '\r', '\x82'));
    const QByteArray bytes = QByteArray::fromStdString(text);
    const auto cut = *rc::gen::inRange<qsizetype>(0, bytes.size() + 1);
    const QList<QByteArray> whole = linesOf({bytes});
    RC_ASSERT(linesOf(singleBytes(bytes)) == whole);
    RC_ASSERT(linesOf({bytes.left(cut), bytes.mid(cut)}) == whole);
}
