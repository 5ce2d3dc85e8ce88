// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/text.h"

#include <QUrl>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace
{

using namespace velto::base;

TEST(Utf8Text, KeepsValidText)
{
    EXPECT_EQ(utf8Text("gr\xc3\xbc\xc3\x9f"), QStringLiteral("grüß"));
    EXPECT_EQ(utf8Text(""), QString());
}

TEST(Utf8Text, KeepsAByteOrderMark)
{
    EXPECT_EQ(utf8Text("\xef\xbb\xbf"
                       "a"),
              QString(QChar(0xfeff)) + u'a');
}

TEST(Utf8Text, RefusesWhatIsNotUtf8)
{
    for (const char *bytes :
         {"\xff", "a\xc3", "\xc3(", "\xed\xa0\x80", "\xc0\xaf", "\xe2\x82", "\xf0\x9f\x98"})
        EXPECT_EQ(utf8Text(bytes), std::nullopt) << QByteArray(bytes).toHex().constData();
}

TEST(UuidText, IsUpperCaseWithHyphensAndWithoutBraces)
{
    EXPECT_EQ(uuidText(QUuid(QStringLiteral("{0a1b2c3d-4e5f-6789-abcd-ef0123456789}"))),
              QStringLiteral("0A1B2C3D-4E5F-6789-ABCD-EF0123456789"));
}

TEST(PathEncoded, KeepsTheSlashAndEncodesWhatEndsAPath)
{
    EXPECT_EQ(pathEncoded(QStringLiteral("a/b")), QStringLiteral("a/b"));
    EXPECT_EQ(pathEncoded(QStringLiteral("a?b#c d%")), QStringLiteral("a%3Fb%23c%20d%25"));
    EXPECT_EQ(pathEncoded(QStringLiteral("é")), QStringLiteral("%C3%A9"));
    EXPECT_EQ(pathEncoded(QStringLiteral("A-z_0.9~!$&'()*+,=:@")),
              QStringLiteral("A-z_0.9~!$&'()*+,=:@"));
}

TEST(FormEncoded, EncodesWhatSeparatesPairs)
{
    EXPECT_EQ(formEncoded(QStringLiteral("a&b=c+d e")), QByteArray("a%26b%3Dc%2Bd%20e"));
    EXPECT_EQ(formEncoded(QStringLiteral("http://127.0.0.1:7/callback")),
              QByteArray("http://127.0.0.1:7/callback"));
}

RC_GTEST_PROP(FormEncoded, ComesBackAsItWas, (const std::string &bytes))
{
    const QString text = QString::fromLatin1(bytes.data(), qsizetype(bytes.size()));
    RC_ASSERT(QUrl::fromPercentEncoding(formEncoded(text)) == text);
    RC_ASSERT(QUrl::fromPercentEncoding(pathEncoded(text).toLatin1()) == text);
}

} // namespace
