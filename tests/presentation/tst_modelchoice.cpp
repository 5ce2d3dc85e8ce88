// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/modelchoice.h"

#include <gtest/gtest.h>

namespace velto::presentation
{
namespace
{

using agent::AppSettings;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

AppSettings settings(const char *model, const char *provider = nullptr,
                     const char *codexModel = nullptr)
{
    AppSettings settings;
    settings.model = text(model);
    if (provider != nullptr)
        settings.provider = text(provider);
    if (codexModel != nullptr)
        settings.codexModel = text(codexModel);
    return settings;
}

TEST(ModelSelectionKey, isThatOfTheSettings)
{
    EXPECT_EQ(modelSelectionKey(settings("claude-opus-4-8")), u"claude:claude-opus-4-8");
    EXPECT_EQ(modelSelectionKey(settings("m", "codex", "fugu")), u"codex:fugu");
    EXPECT_EQ(modelSelectionKey(settings("m", "codex")), u"codex:gpt-5.5");
    EXPECT_EQ(modelSelectionKey(settings("m", "elsewhere", "fugu")), u"claude:m");
}

TEST(ModelSelectionKey, isTheUsualModelWithoutSettings)
{
    EXPECT_EQ(modelSelectionKey({}), u"claude:claude-sonnet-4-6");
}

TEST(ShortModelLabel, dropsTheFamilysName)
{
    EXPECT_EQ(shortModelLabel(text("claude:claude-sonnet-4-6")), u"Sonnet 4.6");
    EXPECT_EQ(shortModelLabel(text("claude:deepseek-v4-pro")), u"DeepSeek V4 Pro");
    EXPECT_EQ(shortModelLabel(text("codex:fugu")), u"Sakana Fugu");
}

TEST(ShortModelLabel, isAutoForAnUnknownModel)
{
    EXPECT_EQ(shortModelLabel(text("claude:claude-next")), u"Auto");
    EXPECT_EQ(shortModelLabel(text("codex:claude-sonnet-4-6")), u"Auto");
    EXPECT_EQ(shortModelLabel({}), u"Auto");
}

} // namespace
} // namespace velto::presentation
