// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/anyjson.h"
#include "base/json.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

#include <limits>

namespace
{

using velto::base::AnyJSON;

AnyJSON parsed(const QByteArray &json)
{
    const auto document = velto::base::json::decode<AnyJSON::Object>(
        R"({"value":)" + json + "}", velto::base::json::Keys::Plain);
    EXPECT_TRUE(document) << json.constData();
    return document ? document->value(QStringLiteral("value")) : AnyJSON();
}

template<typename T>
bool holds(const AnyJSON &any, const T &value)
{
    const T *held = std::get_if<T>(&any.value());
    return held != nullptr && *held == value;
}

TEST(AnyJSON, EveryKindOfValueKeepsItsKind)
{
    EXPECT_TRUE(holds(parsed("null"), nullptr));
    EXPECT_TRUE(holds(parsed("true"), true));
    EXPECT_TRUE(holds(parsed("false"), false));
    EXPECT_TRUE(holds(parsed("1"), 1.0));
    EXPECT_TRUE(holds(parsed("-2.5"), -2.5));
    EXPECT_TRUE(holds(parsed(R"("a")"), QStringLiteral("a")));
    EXPECT_TRUE(holds(parsed("[1,null]"), AnyJSON::Array{AnyJSON(1.0), AnyJSON()}));
    EXPECT_TRUE(
        holds(parsed(R"({"k":false})"), AnyJSON::Object{{QStringLiteral("k"), AnyJSON(false)}}));
}

TEST(AnyJSON, TrueNeverBecomesTheNumberOne)
{
    EXPECT_NE(parsed("true"), parsed("1"));
    EXPECT_NE(parsed("false"), parsed("0"));
    EXPECT_NE(parsed("null"), parsed("false"));
}

TEST(AnyJSON, WhatIsNoJSONIsRefusedAsUnknown)
{
    const auto read = velto::base::json::fromValue<AnyJSON>(velto::base::json::Value(),
                                                            velto::base::json::Keys::Plain);
    ASSERT_FALSE(read);
    EXPECT_TRUE(velto::base::description(read.error()).contains(QStringLiteral("unknown JSON")));
}

TEST(AnyJSON, TheFoundationTreeIsTheOneItCameFrom)
{
    const QByteArray json = R"({"a":[true,false,null,1.5,"x",{"b":{}}]})";
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    EXPECT_EQ(parsed(json).foundationValue(), QJsonValue(object));
}

TEST(AnyJSON, ANumberBeyond64BitsIsStillANumber)
{
    EXPECT_TRUE(holds(parsed("36893488147419103232"), 36893488147419103232.0));
    EXPECT_TRUE(holds(parsed("-36893488147419103232"), -36893488147419103232.0));
    EXPECT_TRUE(holds(parsed("18446744073709551615"), 18446744073709551615.0));
    EXPECT_TRUE(
        holds(parsed("[36893488147419103232,0.36893488147419103232]"),
              AnyJSON::Array{AnyJSON(36893488147419103232.0), AnyJSON(0.36893488147419103232)}));
    EXPECT_TRUE(holds(parsed(R"([36893488147419103232,"a \"36893488147419103232\\"])"),
                      AnyJSON::Array{AnyJSON(36893488147419103232.0),
                                     AnyJSON(QStringLiteral(R"(a "36893488147419103232\)"))}));
}

TEST(AnyJSON, PrettyTextIsTheTextWithoutQuotes)
{
    EXPECT_EQ(parsed(R"("say \"hi\"")").prettyString(), QStringLiteral("say \"hi\""));
    EXPECT_EQ(parsed(R"("")").prettyString(), QString());
}

TEST(AnyJSON, PrettyScalarsAreEmpty)
{
    for (const char *json : {"1", "0.5", "true", "false", "null"})
        EXPECT_EQ(parsed(json).prettyString(), QString()) << json;
}

TEST(AnyJSON, PrettyObjectIsIndentedWithSortedKeysAndPlainSlashes)
{
    EXPECT_EQ(parsed(R"({"b":1,"a":"x/y"})").prettyString(),
              QStringLiteral("{\n    \"a\": \"x/y\",\n    \"b\": 1\n}"));
}

TEST(AnyJSON, PrettyArrayIsIndented)
{
    EXPECT_EQ(parsed("[1,[true]]").prettyString(),
              QStringLiteral("[\n    1,\n    [\n        true\n    ]\n]"));
}

TEST(AnyJSON, PrettyEmptyContainersAreStillJSON)
{
    EXPECT_EQ(QJsonDocument::fromJson(parsed("{}").prettyString().toUtf8()),
              QJsonDocument(QJsonObject()));
    EXPECT_EQ(QJsonDocument::fromJson(parsed("[]").prettyString().toUtf8()),
              QJsonDocument(QJsonArray()));
}

TEST(AnyJSON, WhatTheWriterCannotExpressHasNoPrettyForm)
{
    const AnyJSON infinite(std::numeric_limits<double>::infinity());
    EXPECT_EQ(AnyJSON(AnyJSON::Array{infinite}).prettyString(), QString());
    EXPECT_EQ(AnyJSON(AnyJSON::Object{{QStringLiteral("deep"), AnyJSON(AnyJSON::Array{infinite})}})
                  .prettyString(),
              QString());
    EXPECT_FALSE(infinite.isWritable());
    EXPECT_TRUE(AnyJSON(1.0).isWritable());
}

TEST(AnyJSON, aMissingPayloadShowsAsNothing)
{
    EXPECT_EQ(prettyString(std::optional<AnyJSON>()), QString());
    EXPECT_EQ(prettyString(std::optional(AnyJSON(QStringLiteral("text")))), QStringLiteral("text"));
}

} // namespace
