// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/veltosettingsstore.h"

#include <QPointer>

namespace velto::agent
{

using base::Result;
using base::json::decodeInto;
using base::json::Keys;
using service::LibraryKind;
using Engine = ModelOption::Engine;

namespace
{

const auto settingsPath = QStringLiteral("/v1/settings");

} // namespace

VeltoSettingsStore::VeltoSettingsStore(service::APIClient &api, QObject *parent)
    : FeatureStore(api, parent)
{
    m_rows.assign(agent::integrationRows({}));
}

VeltoSettingsStore::~VeltoSettingsStore() = default;

VeltoSettingsStore::Source VeltoSettingsStore::skillsSource()
{
    return get(QStringLiteral("/v1/settings/skills"), m_skills);
}

VeltoSettingsStore::Source VeltoSettingsStore::subagentsSource()
{
    return get(QStringLiteral("/v1/settings/subagents"), m_subagents);
}

QCoro::Task<void> VeltoSettingsStore::loadAgent()
{
    return load(get(QStringLiteral("/v1/agent/config"), m_agentConfig,
                    &VeltoSettingsStore::agentConfigChanged),
                get(settingsPath, m_settings, &VeltoSettingsStore::settingsChanged));
}

QCoro::Task<void> VeltoSettingsStore::loadLibrary()
{
    return load(skillsSource(), subagentsSource());
}

QCoro::Task<void> VeltoSettingsStore::loadTools()
{
    return load(get(QStringLiteral("/v1/velto/tools"), m_tools, &VeltoSettingsStore::toolsChanged));
}

QCoro::Task<void> VeltoSettingsStore::loadIntegrations()
{
    return load([this] { return askEachProvider(); });
}

VeltoSettingsStore::Reply<void> VeltoSettingsStore::askEachProvider()
{
    const QPointer<VeltoSettingsStore> self(this);
    Integrations found;
    for (const IntegrationProvider provider : integrationProviders()) {
        const Result<QByteArray> answer = co_await api().integrationStatus(rawValue(provider));
        if (!self)
            co_return Result<void>{};
        IntegrationStatus status;
        if (answer && decodeInto(status, *answer, Keys::Snake))
            found.insert(provider, status);
    }
    setIntegrations(std::move(found));
    co_return Result<void>{};
}

QCoro::Task<bool> VeltoSettingsStore::disconnectIntegration(IntegrationProvider provider)
{
    const QString name = rawValue(provider);
    const auto ask = [this, name](const std::stop_token &) {
        return api().integrationStatus(name);
    };
    const Keep keep = decoded<IntegrationStatus>([this, provider](const IntegrationStatus &answer) {
        Integrations changed = m_integrations;
        changed.insert(provider, answer);
        setIntegrations(std::move(changed));
    });
    return change([this, name] { return api().disconnectIntegration(name); }, Source{ask, keep});
}

QCoro::Task<bool> VeltoSettingsStore::setSkillEnabled(QString id, bool enabled)
{
    return change([=, this] { return api().setLibraryEnabled(LibraryKind::Skills, id, enabled); },
                  skillsSource());
}

QCoro::Task<bool> VeltoSettingsStore::deleteSkill(QString id)
{
    return change([=, this] { return api().deleteLibraryItem(LibraryKind::Skills, id); },
                  skillsSource());
}

QCoro::Task<bool> VeltoSettingsStore::setSubagentEnabled(QString id, bool enabled)
{
    return change(
        [=, this] { return api().setLibraryEnabled(LibraryKind::Subagents, id, enabled); },
        subagentsSource());
}

QCoro::Task<bool> VeltoSettingsStore::deleteSubagent(QString id)
{
    return change([=, this] { return api().deleteLibraryItem(LibraryKind::Subagents, id); },
                  subagentsSource());
}

QCoro::Task<bool> VeltoSettingsStore::saveModel(QString id, Engine engine,
                                                std::optional<QString> slug)
{
    assign(m_savedNotice, {}, &VeltoSettingsStore::savedNoticeChanged);
    return change([=, this] { return inTurn(stepsToSave(id, engine, slug)); });
}

QList<VeltoSettingsStore::Work> VeltoSettingsStore::stepsToSave(QString id, Engine engine,
                                                                std::optional<QString> slug)
{
    const Keep keep = decoded<AppSettings>([this](AppSettings saved) {
        assign(m_settings, std::move(saved), &VeltoSettingsStore::settingsChanged);
        assign(m_savedNotice, tr("Saved"), &VeltoSettingsStore::savedNoticeChanged);
    });
    if (engine == Engine::Codex)
        return {putSettings(engine, id, keep)};
    QList<Work> steps;
    const QString claude = rawValue(engine);
    if (m_settings && m_settings->provider.value_or(claude) != claude)
        steps.append(putSettings(engine, {}, nowhere<AppSettings>()));
    if (slug)
        steps.append([=, this] { return api().setAdminWorkspaceModel(*slug, id); });
    steps.append([=, this] { return fetch(get(settingsPath, keep)); });
    return steps;
}

VeltoSettingsStore::Work
VeltoSettingsStore::putSettings(Engine engine, std::optional<QString> codexModel, Keep keep)
{
    const auto put = [=, this](const std::stop_token &) {
        return api().saveSettings(rawValue(engine), codexModel);
    };
    return [=, this] { return fetch({put, keep}); };
}

void VeltoSettingsStore::startSaveModel(const QString &selectionKey, const QString &slug)
{
    if (const auto option = optionForKey(selectionKey))
        saveModel(option->id, option->engine, slug.isEmpty() ? std::nullopt : std::optional(slug));
}

void VeltoSettingsStore::reset()
{
    FeatureStore::reset();
    assign(m_agentConfig, {}, &VeltoSettingsStore::agentConfigChanged);
    assign(m_settings, {}, &VeltoSettingsStore::settingsChanged);
    m_skills.assign({});
    m_subagents.assign({});
    assign(m_tools, {}, &VeltoSettingsStore::toolsChanged);
    setIntegrations({});
    assign(m_savedNotice, {}, &VeltoSettingsStore::savedNoticeChanged);
}

void VeltoSettingsStore::setIntegrations(Integrations integrations)
{
    m_rows.assign(agent::integrationRows(integrations));
    assign(m_integrations, std::move(integrations), &VeltoSettingsStore::integrationsChanged);
}

} // namespace velto::agent
