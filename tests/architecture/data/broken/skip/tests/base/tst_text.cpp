// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

TEST(Text, DISABLED_trims)
{
}
TEST(Text, joins)
{
    GTEST_SKIP();
}
