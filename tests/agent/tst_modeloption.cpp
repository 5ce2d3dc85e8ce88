// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/modeloption.h"

#include <gtest/gtest.h>

namespace velto::agent
{
namespace
{

using Engine = ModelOption::Engine;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

TEST(ModelOption, IsOfferedInThisOrder)
{
    const QList<ModelOption> expected{
        {text("claude-fable-5"), text("Claude Fable 5"), Engine::Claude},
        {text("claude-opus-4-8"), text("Claude Opus 4.8"), Engine::Claude},
        {text("claude-opus-4-7"), text("Claude Opus 4.7"), Engine::Claude},
        {text("claude-opus-4-6"), text("Claude Opus 4.6"), Engine::Claude},
        {text("claude-sonnet-4-6"), text("Claude Sonnet 4.6"), Engine::Claude},
        {text("claude-haiku-4-5"), text("Claude Haiku 4.5"), Engine::Claude},
        {text("deepseek-v4-pro"), text("DeepSeek V4 Pro"), Engine::Claude},
        {text("glm-5.2[1m]"), text("GLM 5.2 (1M)"), Engine::Claude},
        {text("glm-5.2"), text("GLM 5.2"), Engine::Claude},
        {text("gpt-5.5"), text("GPT-5.5"), Engine::Codex},
        {text("gpt-5.4"), text("GPT-5.4"), Engine::Codex},
        {text("fugu"), text("Sakana Fugu"), Engine::Codex},
        {text("fugu-ultra"), text("Sakana Fugu Ultra"), Engine::Codex},
    };
    EXPECT_EQ(allModelOptions(), expected);
    EXPECT_EQ(&allModelOptions(), &allModelOptions());
}

TEST(ModelOption, KeysNameTheEngineAndTheModel)
{
    EXPECT_EQ(allModelOptions()[1].selectionKey(), text("claude:claude-opus-4-8"));
    EXPECT_EQ(allModelOptions()[6].selectionKey(), text("claude:deepseek-v4-pro"));
    EXPECT_EQ(allModelOptions()[9].selectionKey(), text("codex:gpt-5.5"));
}

TEST(ModelOption, IsFoundByItsKey)
{
    for (const ModelOption &option : allModelOptions())
        EXPECT_EQ(optionForKey(option.selectionKey()), option);
}

TEST(ModelOption, IsNotFoundByAnUnknownKey)
{
    for (const char *key : {"", "claude-opus-4-8", "claude:gpt-5.5", "codex:glm-5.2",
                            "Claude:claude-opus-4-8", "claude:", "claude:my-own-model"})
        EXPECT_EQ(optionForKey(text(key)), std::nullopt) << key;
}

TEST(CurrentSelectionKey, FollowsTheProvider)
{
    struct Row
    {
        std::optional<QString> provider;
        std::optional<QString> codexModel;
        const char *key;
    };
    const QList<Row> rows{
        {{}, {}, "claude:m"},
        {{}, text("fugu"), "claude:m"},
        {text("claude"), text("fugu"), "claude:m"},
        {text("codex"), text("fugu"), "codex:fugu"},
        {text("codex"), {}, "codex:gpt-5.5"},
        {text("codex"), text(""), "codex:"},
        {text("whatever"), text("fugu"), "claude:m"},
        {text("Codex"), text("fugu"), "claude:m"},
        {text(""), {}, "claude:m"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(currentSelectionKey(row.provider, text("m"), row.codexModel), text(row.key));
        EXPECT_EQ(currentSelectionKey(AppSettings{text("m"), row.provider, row.codexModel}),
                  text(row.key));
    }
}

TEST(CurrentSelectionKey, IsTheUsualModelWhileNothingIsLoaded)
{
    const QString key = currentSelectionKey(std::nullopt, std::nullopt);
    EXPECT_EQ(key, text("claude:claude-opus-4-8"));
    EXPECT_EQ(optionForKey(key)->label, text("Claude Opus 4.8"));
}

TEST(CurrentSelectionKey, PrefersSettingsToTheEffectiveModel)
{
    const AgentConfig config{text("glm-5.2"), {}, {}, {}, {}};
    EXPECT_EQ(currentSelectionKey(std::nullopt, config), text("claude:glm-5.2"));
    const AppSettings settings{text("m"), text("codex"), {}};
    EXPECT_EQ(currentSelectionKey(settings, config), text("codex:gpt-5.5"));
}

} // namespace
} // namespace velto::agent
