// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/filechooser.h"
#include "support/coroutinetest.h"

#include <gtest/gtest.h>

namespace velto::platform
{
namespace
{

TEST(FileChooserAbsent, saysThatThereIsNoDialog)
{
    const auto chooser = makeSystemFileChooser();
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(std::holds_alternative<FileChooser::Unavailable>(
            test::await(chooser->chooseFile(QStringLiteral("Attach file"), 0))));
    }
}

} // namespace
} // namespace velto::platform
