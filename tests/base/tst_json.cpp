// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/json.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace
{

using namespace velto::base;
namespace json = velto::base::json;
using json::Keys;

struct Child
{
    QString role;
    std::optional<qint64> size;

    static json::Fields jsonFields()
    {
        using json::field;
        static constexpr std::array fields{field<&Child::role>("role"),
                                           field<&Child::size>("size")};
        return fields;
    }
    bool operator==(const Child &) const = default;
};

struct Parent
{
    QString userId;
    bool isAdmin = false;
    int messageCount = 0;
    double ratio = 0;
    std::optional<QString> avatarURL;
    QList<Child> workspaces;
    QMap<QString, Child> byName;
    std::optional<AnyJSON> extra;

    static json::Fields jsonFields()
    {
        using json::field;
        static constexpr std::array fields{field<&Parent::userId>("userId"),
                                           field<&Parent::isAdmin>("isAdmin"),
                                           field<&Parent::messageCount>("messageCount"),
                                           field<&Parent::ratio>("ratio"),
                                           field<&Parent::avatarURL>("avatarUrl"),
                                           field<&Parent::workspaces>("workspaces"),
                                           field<&Parent::byName>("byName"),
                                           field<&Parent::extra>("extra")};
        return fields;
    }
    bool operator==(const Parent &) const = default;
};

const QByteArray wholeParent = R"({
    "user_id": "u", "isAdmin": true, "message_count": 3, "ratio": 0.5, "avatar_url": "http://x",
    "workspaces": [{"role": "owner", "size": 9007199254740991}], "by_name": {"some_key": {"role": "m"}},
    "extra": {"raw_key": [1]}, "nobody_knows_me": {}})";

Parent expectedParent()
{
    const AnyJSON extra(
        AnyJSON::Object{{QStringLiteral("raw_key"), AnyJSON(AnyJSON::Array{AnyJSON(1.0)})}});
    return {QStringLiteral("u"),
            true,
            3,
            0.5,
            QStringLiteral("http://x"),
            {{QStringLiteral("owner"), 9007199254740991}},
            {{QStringLiteral("some_key"), {QStringLiteral("m"), std::nullopt}}},
            extra};
}

DecodingError errorOf(const Result<Parent> &result)
{
    EXPECT_FALSE(result.has_value());
    return result ? DecodingError{} : std::get<DecodingError>(result.error());
}

/// The whole document with one text replaced.
DecodingError errorWith(const char *before, const char *after)
{
    const QByteArray document = QByteArray(wholeParent).replace(before, after);
    EXPECT_NE(document, wholeParent) << before;
    return errorOf(json::decode<Parent>(document, Keys::Snake));
}

TEST(Decoder, ReadsEitherSpellingOfAKeyAndIgnoresWhatItDoesNotKnow)
{
    EXPECT_EQ(json::decode<Parent>(wholeParent, Keys::Snake).value(), expectedParent());
    const QByteArray camel = QByteArray(wholeParent)
                                 .replace("user_id", "userId")
                                 .replace("message_count", "messageCount")
                                 .replace("avatar_url", "avatarUrl")
                                 .replace("by_name", "byName");
    EXPECT_EQ(json::decode<Parent>(camel, Keys::Snake).value(), expectedParent());
    EXPECT_EQ(json::decode<Parent>(camel, Keys::Plain).value(), expectedParent());
}

TEST(Decoder, PlainKeysMatchToTheLetter)
{
    const DecodingError error = errorOf(json::decode<Parent>(wholeParent, Keys::Plain));
    EXPECT_EQ(error.path, QStringLiteral("userId"));
}

TEST(Decoder, OptionalFieldsMayBeAbsentOrNull)
{
    const QByteArray document = QByteArray(wholeParent)
                                    .replace(R"("avatar_url": "http://x",)", "")
                                    .replace(R"({"raw_key": [1]})", "null");
    const Parent parent = json::decode<Parent>(document, Keys::Snake).value();
    EXPECT_EQ(parent.avatarURL, std::nullopt);
    EXPECT_EQ(parent.extra, std::nullopt);
}

TEST(Decoder, RequiredFieldsMayBeNeither)
{
    EXPECT_EQ(errorWith(R"("ratio": 0.5,)", ""),
              (DecodingError{QStringLiteral("ratio"), QStringLiteral("a number"),
                             QStringLiteral("nothing")}));
    EXPECT_EQ(errorWith("0.5", "null"),
              (DecodingError{QStringLiteral("ratio"), QStringLiteral("a number"),
                             QStringLiteral("null")}));
}

TEST(Decoder, AnErrorNamesThePathAndWhatWasExpectedAndFound)
{
    EXPECT_EQ(errorWith(R"("workspaces": [)", R"("workspaces": [{"role":"a"},{"role":7},)"),
              (DecodingError{QStringLiteral("workspaces[1].role"), QStringLiteral("text"),
                             QStringLiteral("a number")}));
    EXPECT_EQ(errorWith(R"({"role": "m"})", R"({"role": []})"),
              (DecodingError{QStringLiteral("byName.some_key.role"), QStringLiteral("text"),
                             QStringLiteral("a list")}));
    EXPECT_EQ(errorWith("9007199254740991", "\"big\""),
              (DecodingError{QStringLiteral("workspaces[0].size"), QStringLiteral("a whole number"),
                             QStringLiteral("text")}));
    EXPECT_EQ(errorWith(R"({"role": "m"})", "true"),
              (DecodingError{QStringLiteral("byName.some_key"), QStringLiteral("an object"),
                             QStringLiteral("a truth value")}));
    EXPECT_EQ(errorWith(R"("isAdmin": true)", R"("isAdmin": 1)"),
              (DecodingError{QStringLiteral("isAdmin"), QStringLiteral("a truth value"),
                             QStringLiteral("a number")}));
}

TEST(Decoder, WholeNumbersAreWhole)
{
    for (const char *number : {"3.5", "2147483648", "-2147483649", "1e20", "true", "\"3\""}) {
        const QByteArray text = QByteArray("\"message_count\": ") + number;
        EXPECT_EQ(errorWith("\"message_count\": 3", text.constData()).expected,
                  QStringLiteral("a whole number"))
            << number;
    }
    const QByteArray wholeFraction = QByteArray(wholeParent).replace(": 3,", ": 3.0,");
    EXPECT_EQ(json::decode<Parent>(wholeFraction, Keys::Snake).value().messageCount, 3);
}

TEST(Decoder, ADocumentOfAnotherShapeIsAnErrorWithoutAPath)
{
    const DecodingError list = errorOf(json::decode<Parent>("[]", Keys::Snake));
    EXPECT_EQ(list, (DecodingError{{}, QStringLiteral("an object"), QStringLiteral("a list")}));
    for (const char *text : {"", "{", "<html>", "tru", "{} {}"}) {
        const DecodingError error = errorOf(json::decode<Parent>(text, Keys::Snake));
        EXPECT_EQ(error.path, QString()) << text;
        EXPECT_EQ(error.expected, QStringLiteral("JSON")) << text;
    }
}

TEST(Decoder, ABareListIsADocumentToo)
{
    const auto children = json::decode<QList<Child>>(R"([{"role":"a"},{"role":"b"}])", Keys::Snake);
    EXPECT_EQ(children.value(),
              (QList<Child>{{QStringLiteral("a"), {}}, {QStringLiteral("b"), {}}}));
    const auto broken = json::decode<QList<Child>>(R"([{"role":"a"},{}])", Keys::Snake);
    EXPECT_EQ(std::get<DecodingError>(broken.error()).path, QStringLiteral("[1].role"));
}

TEST(Encoder, WritesSnakeCaseAndLeavesAbsentFieldsOut)
{
    const Child child{QStringLiteral("owner"), {}};
    EXPECT_EQ(json::encode(child, Keys::Snake).value(), R"({"role":"owner"})");
    Parent parent = expectedParent();
    parent.avatarURL.reset();
    EXPECT_EQ(json::encode(parent, Keys::Snake).value(),
              R"({"by_name":{"some_key":{"role":"m"}},"extra":{"raw_key":[1]},"is_admin":true,)"
              R"("message_count":3,"ratio":0.5,"user_id":"u",)"
              R"("workspaces":[{"role":"owner","size":9007199254740991}]})");
}

TEST(Encoder, PlainKeysGoOutAsTheyStand)
{
    const QMap<QString, QString> literal{{QStringLiteral("catalogId"), QStringLiteral("c")}};
    EXPECT_EQ(json::encode(literal, Keys::Plain).value(), R"({"catalogId":"c"})");
    EXPECT_TRUE(json::encode(expectedParent(), Keys::Plain).value().contains("\"userId\""));
}

TEST(Encoder, TheKeysOfAMapAreDataAndStayInEitherForm)
{
    const QMap<QString, QString> literal{{QStringLiteral("codexModel"), QStringLiteral("m")}};
    EXPECT_EQ(json::encode(literal, Keys::Snake).value(), R"({"codexModel":"m"})");
}

TEST(Encoder, AnInfiniteNumberIsAnErrorThatNamesItsField)
{
    Parent parent = expectedParent();
    parent.ratio = std::numeric_limits<double>::infinity();
    EXPECT_EQ(std::get<EncodingError>(json::encode(parent, Keys::Snake).error()).path,
              QStringLiteral("ratio"));
    parent.ratio = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(json::encode(parent, Keys::Snake));
    parent = expectedParent();
    parent.extra = AnyJSON(AnyJSON::Array{AnyJSON(-std::numeric_limits<double>::infinity())});
    EXPECT_EQ(std::get<EncodingError>(json::encode(parent, Keys::Snake).error()).path,
              QStringLiteral("extra"));
}

TEST(SnakeCase, TurnsIntoCamelCase)
{
    const QList<std::pair<const char *, const char *>> rows{{"user_id", "userId"},
                                                            {"userId", "userId"},
                                                            {"a", "a"},
                                                            {"", ""},
                                                            {"_", "_"},
                                                            {"__", "__"},
                                                            {"_private", "_private"},
                                                            {"_user_id_", "_userId_"},
                                                            {"one_two_three", "oneTwoThree"},
                                                            {"a__b", "aB"},
                                                            {"SHOUTED_KEY", "shoutedKey"},
                                                            {"URL", "URL"},
                                                            {"some_URL", "someUrl"}};
    for (const auto &[snake, camel] : rows)
        EXPECT_EQ(json::fromSnakeCase(QLatin1StringView(snake)), QLatin1StringView(camel)) << snake;
}

TEST(SnakeCase, ComesFromCamelCase)
{
    const QList<std::pair<const char *, const char *>> rows{{"workspaceId", "workspace_id"},
                                                            {"someURLText", "some_url_text"},
                                                            {"role", "role"},
                                                            {"myURL", "my_url"},
                                                            {"already_snake", "already_snake"},
                                                            {"", ""}};
    for (const auto &[camel, snake] : rows)
        EXPECT_EQ(json::toSnakeCase(QLatin1StringView(camel)), QLatin1StringView(snake)) << camel;
}

rc::Gen<std::string> lowerCaseWord()
{
    return rc::gen::nonEmpty(rc::gen::container<std::string>(rc::gen::inRange('a', char('z' + 1))));
}

RC_GTEST_PROP(SnakeCase, OfPlainWordsComesBackAsItWas, ())
{
    const auto words =
        *rc::gen::nonEmpty(rc::gen::container<std::vector<std::string>>(lowerCaseWord()));
    QString camel = QString::fromStdString(words.front());
    for (std::size_t i = 1; i < words.size(); ++i) {
        // A word of one letter between capitals can't be told from an abbreviation.
        const QString word = QString::fromStdString(words[i]) + u'x';
        camel += word.left(1).toUpper() + word.mid(1);
    }
    RC_ASSERT(json::fromSnakeCase(json::toSnakeCase(camel)) == camel);
}

QString anyText()
{
    const auto bytes = *rc::gen::arbitrary<std::string>();
    return QString::fromLatin1(bytes.data(), qsizetype(bytes.size()));
}

Child anyChild()
{
    Child child;
    child.role = anyText();
    if (*rc::gen::arbitrary<bool>())
        child.size = *rc::gen::inRange<qint64>(-(1LL << 53), 1LL << 53);
    return child;
}

RC_GTEST_PROP(Codec, ReadsBackWhatItWrote, ())
{
    Parent parent;
    parent.userId = anyText();
    parent.isAdmin = *rc::gen::arbitrary<bool>();
    parent.messageCount = *rc::gen::arbitrary<int>();
    parent.ratio = *rc::gen::arbitrary<double>();
    if (*rc::gen::arbitrary<bool>())
        parent.avatarURL = anyText();
    for (int i = *rc::gen::inRange(0, 4); i > 0; --i)
        parent.workspaces.append(anyChild());
    for (int i = *rc::gen::inRange(0, 4); i > 0; --i)
        parent.byName.insert(anyText(), anyChild());
    parent.extra = AnyJSON(AnyJSON::Array{AnyJSON(parent.userId), AnyJSON(), AnyJSON(true)});
    for (const Keys keys : {Keys::Snake, Keys::Plain}) {
        const auto back = json::decode<Parent>(json::encode(parent, keys).value(), keys);
        RC_ASSERT(back.has_value());
        RC_ASSERT(*back == parent);
    }
}

} // namespace
