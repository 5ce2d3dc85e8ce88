// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "agent/integrations.h"
#include "agent/modeloption.h"
#include "agent/settingsrecords.h"
#include "service/featurestore.h"

namespace velto::agent
{

/// How the agent is configured for the signed-in user: model, library, tools, integrations.
class VeltoSettingsStore final : public service::FeatureStore
{
    Q_OBJECT
    /// Undefined until loaded, like `settings` and `tools`.
    Q_PROPERTY(QVariant agentConfig READ agentConfig NOTIFY agentConfigChanged FINAL)
    Q_PROPERTY(QVariant settings READ settings NOTIFY settingsChanged FINAL)
    Q_PROPERTY(velto::service::RecordListModel *skills READ skills CONSTANT FINAL)
    Q_PROPERTY(velto::service::RecordListModel *subagents READ subagents CONSTANT FINAL)
    Q_PROPERTY(QVariant tools READ tools NOTIFY toolsChanged FINAL)
    /// Always ten rows, whatever is known; `hasIntegrations` when anything is.
    Q_PROPERTY(velto::service::RecordListModel *integrationRows READ rows CONSTANT FINAL)
    Q_PROPERTY(bool hasIntegrations READ hasIntegrations NOTIFY integrationsChanged FINAL)
    /// Undefined until a model was saved.
    Q_PROPERTY(QVariant savedNotice READ savedNotice NOTIFY savedNoticeChanged FINAL)

public:
    using Skills = service::RecordList<LibrarySkill, &LibrarySkill::id>;
    using Subagents = service::RecordList<LibrarySubagent, &LibrarySubagent::id>;
    using Rows = service::RecordList<IntegrationRow, &IntegrationRow::provider>;

    explicit VeltoSettingsStore(service::APIClient &api, QObject *parent = nullptr);
    ~VeltoSettingsStore() override;

    [[nodiscard]] const base::Optional<AgentConfig> &agentConfig() const { return m_agentConfig; }
    [[nodiscard]] const base::Optional<AppSettings> &settings() const { return m_settings; }
    [[nodiscard]] Skills *skills() { return &m_skills; }
    [[nodiscard]] Subagents *subagents() { return &m_subagents; }
    [[nodiscard]] const base::Optional<VeltoToolCatalog> &tools() const { return m_tools; }
    /// A provider whose status could not be fetched has no entry.
    [[nodiscard]] const Integrations &integrations() const { return m_integrations; }
    [[nodiscard]] bool hasIntegrations() const { return !m_integrations.isEmpty(); }
    [[nodiscard]] Rows *rows() { return &m_rows; }
    [[nodiscard]] const base::Optional<QString> &savedNotice() const { return m_savedNotice; }

    QCoro::Task<void> loadAgent();
    QCoro::Task<void> loadLibrary();
    QCoro::Task<void> loadTools();
    /// Never reports a failure: a provider that does not answer has no entry.
    QCoro::Task<void> loadIntegrations();

    // Changes give whether they succeeded.
    QCoro::Task<bool> disconnectIntegration(IntegrationProvider provider);
    /// A Claude model belongs to the workspace: without a `slug` its id is sent nowhere.
    QCoro::Task<bool> saveModel(QString id, ModelOption::Engine engine,
                                std::optional<QString> slug);
    QCoro::Task<bool> setSkillEnabled(QString id, bool enabled);
    QCoro::Task<bool> deleteSkill(QString id);
    QCoro::Task<bool> setSubagentEnabled(QString id, bool enabled);
    QCoro::Task<bool> deleteSubagent(QString id);
    void reset() override;

    Q_INVOKABLE void startLoadAgent() { loadAgent(); }
    Q_INVOKABLE void startLoadLibrary() { loadLibrary(); }
    Q_INVOKABLE void startLoadTools() { loadTools(); }
    Q_INVOKABLE void startLoadIntegrations() { loadIntegrations(); }
    Q_INVOKABLE void startDisconnectIntegration(velto::agent::IntegrationProvider provider)
    {
        disconnectIntegration(provider);
    }
    /// Saves the option with that key, if there is one. An empty slug is none.
    Q_INVOKABLE void startSaveModel(const QString &selectionKey, const QString &slug);
    Q_INVOKABLE void startSetSkillEnabled(const QString &id, bool on) { setSkillEnabled(id, on); }
    Q_INVOKABLE void startDeleteSkill(const QString &id) { deleteSkill(id); }
    Q_INVOKABLE void startSetSubagentEnabled(const QString &id, bool on)
    {
        setSubagentEnabled(id, on);
    }
    Q_INVOKABLE void startDeleteSubagent(const QString &id) { deleteSubagent(id); }

signals:
    void agentConfigChanged();
    void settingsChanged();
    void toolsChanged();
    void integrationsChanged();
    void savedNoticeChanged();

private:
    [[nodiscard]] Source skillsSource();
    [[nodiscard]] Source subagentsSource();
    Reply<void> askEachProvider();
    [[nodiscard]] QList<Work> stepsToSave(QString id, ModelOption::Engine engine,
                                          std::optional<QString> slug);
    [[nodiscard]] Work putSettings(ModelOption::Engine engine, std::optional<QString> codexModel,
                                   Keep keep);
    void setIntegrations(Integrations integrations);

    base::Optional<AgentConfig> m_agentConfig;
    base::Optional<AppSettings> m_settings;
    Skills m_skills;
    Subagents m_subagents;
    base::Optional<VeltoToolCatalog> m_tools;
    Integrations m_integrations;
    Rows m_rows;
    base::Optional<QString> m_savedNotice;
};

} // namespace velto::agent
