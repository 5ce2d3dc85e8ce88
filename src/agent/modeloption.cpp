// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/modeloption.h"

#include <algorithm>

namespace velto::agent
{
namespace
{

using Engine = ModelOption::Engine;

const auto defaultClaudeModel = QStringLiteral("claude-opus-4-8");
const auto defaultCodexModel = QStringLiteral("gpt-5.5");

} // namespace

QString rawValue(ModelOption::Engine engine)
{
    return engine == Engine::Codex ? QStringLiteral("codex") : QStringLiteral("claude");
}

QString ModelOption::selectionKey() const
{
    return rawValue(engine) + u':' + id;
}

const QList<ModelOption> &allModelOptions()
{
    static const auto options = [] {
        const auto option = [](const char *id, const char *label, Engine engine) {
            return ModelOption{QString::fromLatin1(id), QString::fromLatin1(label), engine};
        };
        return QList<ModelOption>{
            option("claude-fable-5", "Claude Fable 5", Engine::Claude),
            option("claude-opus-4-8", "Claude Opus 4.8", Engine::Claude),
            option("claude-opus-4-7", "Claude Opus 4.7", Engine::Claude),
            option("claude-opus-4-6", "Claude Opus 4.6", Engine::Claude),
            option("claude-sonnet-4-6", "Claude Sonnet 4.6", Engine::Claude),
            option("claude-haiku-4-5", "Claude Haiku 4.5", Engine::Claude),
            option("deepseek-v4-pro", "DeepSeek V4 Pro", Engine::Claude),
            option("glm-5.2[1m]", "GLM 5.2 (1M)", Engine::Claude),
            option("glm-5.2", "GLM 5.2", Engine::Claude),
            option("gpt-5.5", "GPT-5.5", Engine::Codex),
            option("gpt-5.4", "GPT-5.4", Engine::Codex),
            option("fugu", "Sakana Fugu", Engine::Codex),
            option("fugu-ultra", "Sakana Fugu Ultra", Engine::Codex),
        };
    }();
    return options;
}

QString currentSelectionKey(const std::optional<QString> &provider, const QString &model,
                            const std::optional<QString> &codexModel)
{
    if (provider == rawValue(Engine::Codex))
        return rawValue(Engine::Codex) + u':' + codexModel.value_or(defaultCodexModel);
    return rawValue(Engine::Claude) + u':' + model;
}

QString currentSelectionKey(const AppSettings &settings)
{
    return currentSelectionKey(settings.provider, settings.model, settings.codexModel);
}

QString currentSelectionKey(const std::optional<AppSettings> &settings,
                            const std::optional<AgentConfig> &config)
{
    if (settings)
        return currentSelectionKey(*settings);
    return currentSelectionKey({}, config ? config->model : defaultClaudeModel, {});
}

std::optional<ModelOption> optionForKey(const QString &selectionKey)
{
    const QList<ModelOption> &options = allModelOptions();
    const auto found = std::ranges::find(options, selectionKey, &ModelOption::selectionKey);
    return found == options.end() ? std::nullopt : std::optional(*found);
}

} // namespace velto::agent
