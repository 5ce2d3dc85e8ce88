// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/json.h"
#include "base/optional.h"

#include <gtest/gtest.h>

namespace velto::base
{
namespace
{

TEST(Optional, ReachesQmlAsItsValueOrNotAtAll)
{
    EXPECT_FALSE(QVariant(Optional<QString>()).isValid());
    EXPECT_EQ(QVariant(Optional<QString>(QStringLiteral("a"))), QVariant(QStringLiteral("a")));
    // Present and empty is not absent.
    EXPECT_TRUE(QVariant(Optional<QString>(QString())).isValid());
    EXPECT_EQ(QVariant(Optional<bool>(false)), QVariant(false));
}

TEST(Optional, ComparesLikeTheOneItIs)
{
    const Optional<int> none;
    const Optional<int> one = 1;
    EXPECT_TRUE(none == std::nullopt);
    EXPECT_TRUE(none == std::optional<int>());
    EXPECT_TRUE(std::optional<int>() == none);
    EXPECT_FALSE(one == std::optional<int>());
    EXPECT_TRUE(one == 1);
    EXPECT_TRUE(1 == one);
    EXPECT_TRUE(std::optional(1) == one);
    EXPECT_TRUE(one == Optional<int>(1));
    EXPECT_TRUE(one != none);
    EXPECT_TRUE(one != 2);
}

TEST(Optional, TakesAndGivesAPlainOne)
{
    Optional<bool> value = std::optional(true);
    EXPECT_TRUE(value == true);
    value = false;
    EXPECT_TRUE(value == false);
    value = std::nullopt;
    const std::optional<bool> plain = value;
    EXPECT_FALSE(plain.has_value());
}

struct Record
{
    Optional<QString> text;
    Optional<QList<int>> numbers;
    static json::Fields jsonFields()
    {
        static constexpr std::array fields{json::field<&Record::text>("text"),
                                           json::field<&Record::numbers>("numbers")};
        return fields;
    }
};

TEST(Optional, IsReadAndWrittenByTheCodec)
{
    const auto read = json::decode<Record>(R"({"text":null,"numbers":[1,2]})", json::Keys::Plain);
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->text == std::nullopt);
    EXPECT_TRUE(read->numbers == (QList<int>{1, 2}));
    EXPECT_EQ(json::encode(*read, json::Keys::Plain).value(), R"({"numbers":[1,2]})");
}

} // namespace
} // namespace velto::base
