// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "agent/settingsrecords.h"

#include <QObject>
#include <QString>

#include <optional>

namespace velto::agent
{

/// A model that can be chosen. The engine says whose settings the choice is stored in, which is not
/// always who made the model.
struct ModelOption
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(velto::agent::ModelOption::Engine engine MEMBER engine CONSTANT)
    Q_PROPERTY(QString selectionKey READ selectionKey CONSTANT)

public:
    enum class Engine { Claude, Codex };
    Q_ENUM(Engine)

    QString id;
    QString label;
    Engine engine = Engine::Claude;

    /// "claude:claude-opus-4-8": the form in which the two engines share one choice.
    [[nodiscard]] QString selectionKey() const;

    bool operator==(const ModelOption &) const = default;
};

/// "claude" or "codex", as the service calls the engine.
[[nodiscard]] QString rawValue(ModelOption::Engine engine);

/// Every model on offer, those of the Claude engine first.
[[nodiscard]] const QList<ModelOption> &allModelOptions();

/// The key of the stored choice. Any provider but "codex" means Claude.
[[nodiscard]] QString currentSelectionKey(const std::optional<QString> &provider,
                                          const QString &model,
                                          const std::optional<QString> &codexModel);
[[nodiscard]] QString currentSelectionKey(const AppSettings &settings);
/// While no settings are loaded: Claude with the effective model, or with the usual one while that
/// is not known either.
[[nodiscard]] QString currentSelectionKey(const std::optional<AppSettings> &settings,
                                          const std::optional<AgentConfig> &config);

/// The first option with that key.
[[nodiscard]] std::optional<ModelOption> optionForKey(const QString &selectionKey);

} // namespace velto::agent
