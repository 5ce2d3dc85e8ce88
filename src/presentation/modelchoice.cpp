// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/modelchoice.h"

#include <QVariantMap>

namespace velto::presentation
{

using agent::ModelOption;
using chat::AppState;

QString modelSelectionKey(const std::optional<agent::AppSettings> &settings)
{
    if (settings)
        return agent::currentSelectionKey(*settings);
    return agent::currentSelectionKey({}, QStringLiteral("claude-sonnet-4-6"), {});
}

QString shortModelLabel(const QString &selectionKey)
{
    const auto option = agent::optionForKey(selectionKey);
    if (!option)
        return ModelChoice::tr("Auto");
    return QString(option->label).remove(QLatin1String("Claude "));
}

void ModelChoice::setAppState(AppState *appState)
{
    if (m_appState == appState)
        return;
    if (m_appState != nullptr) {
        m_appState->disconnect(this);
        m_appState->veltoSettings()->disconnect(this);
    }
    m_appState = appState;
    if (appState != nullptr) {
        connect(appState, &AppState::authStatusChanged, this, &ModelChoice::updateCanChoose);
        connect(appState->veltoSettings(), &agent::VeltoSettingsStore::settingsChanged, this,
                &ModelChoice::updateSelection);
    }
    emit appStateChanged();
    updateSelection();
    updateCanChoose();
}

QString ModelChoice::label() const
{
    return shortModelLabel(m_selectionKey);
}

QVariantList ModelChoice::options() const
{
    QVariantList options;
    for (const ModelOption &option : agent::allModelOptions()) {
        const QString key = option.selectionKey();
        options.append(QVariantMap{{QStringLiteral("label"), option.label},
                                   {QStringLiteral("selectionKey"), key},
                                   {QStringLiteral("isSelected"), key == m_selectionKey}});
    }
    return options;
}

void ModelChoice::load()
{
    if (m_appState != nullptr && !m_appState->veltoSettings()->settings())
        m_appState->veltoSettings()->startLoadAgent();
}

void ModelChoice::choose(const QString &selectionKey)
{
    if (m_appState == nullptr)
        return;
    const auto workspace = m_appState->currentWorkspace();
    m_appState->veltoSettings()->startSaveModel(selectionKey,
                                                workspace ? workspace->slug : QString());
}

void ModelChoice::updateSelection()
{
    const QString key = m_appState == nullptr
                            ? modelSelectionKey({})
                            : modelSelectionKey(m_appState->veltoSettings()->settings());
    if (m_selectionKey == key)
        return;
    m_selectionKey = key;
    emit selectionChanged();
}

void ModelChoice::updateCanChoose()
{
    const bool canChoose = m_appState != nullptr && m_appState->canManageWorkspace();
    if (m_canChoose == canChoose)
        return;
    m_canChoose = canChoose;
    emit canChooseChanged();
}

} // namespace velto::presentation
