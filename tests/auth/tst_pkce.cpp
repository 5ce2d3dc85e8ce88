// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/pkce.h"

#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace velto::auth
{
namespace
{

TEST(Pkce, randomStringsAre86URLSafeCharacters)
{
    const QRegularExpression urlSafe(QStringLiteral("\\A[A-Za-z0-9_-]{86}\\z"));
    for (int i = 0; i < 500; ++i)
        EXPECT_TRUE(urlSafe.match(randomURLSafeString()).hasMatch());
}

TEST(Pkce, noRandomStringComesTwice)
{
    QSet<QString> seen;
    for (int i = 0; i < 500; ++i)
        seen.insert(randomURLSafeString());
    EXPECT_EQ(seen.size(), 500);
}

TEST(Pkce, everyPositionOfARandomStringVaries)
{
    QList<QSet<QChar>> seen(86);
    for (int i = 0; i < 200; ++i) {
        const QString text = randomURLSafeString();
        for (int position = 0; position < 86; ++position)
            seen[position].insert(text[position]);
    }
    // The last character carries two bits only.
    EXPECT_EQ(seen.last().size(), 4);
    for (int position = 0; position < 85; ++position)
        EXPECT_GT(seen[position].size(), 30);
}

TEST(Pkce, challengeIsThatOfRFC7636)
{
    EXPECT_EQ(codeChallenge(QStringLiteral("dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk")),
              u"E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM");
}

TEST(Pkce, challengeIs43URLSafeCharacters)
{
    const QRegularExpression urlSafe(QStringLiteral("\\A[A-Za-z0-9_-]{43}\\z"));
    for (int i = 0; i < 200; ++i)
        EXPECT_TRUE(urlSafe.match(codeChallenge(randomURLSafeString())).hasMatch());
}

} // namespace
} // namespace velto::auth
