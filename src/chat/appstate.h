// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "agent/marketplacestore.h"
#include "agent/veltosettingsstore.h"
#include "auth/authclient.h"
#include "auth/tokenstore.h"
#include "chat/authstatus.h"
#include "chat/chatstream.h"
#include "chat/messagelistmodel.h"
#include "platform/secretstore.h"
#include "platform/urlopener.h"
#include "service/apiclient.h"
#include "service/transport.h"
#include "workspace/adminstore.h"
#include "workspace/profilestore.h"
#include "workspace/workspacestore.h"

#include <QCoroTask>

#include <QObject>

#include <memory>
#include <optional>
#include <stop_token>

namespace velto::chat
{

/// What the banner of the chat shows.
struct ChatErrorState
{
    QString message;
    bool operator==(const ChatErrorState &) const = default;
};

/// The root object: it owns the clients and the feature stores and holds the observable state of
/// the session. One instance per process, on the main thread.
///
/// Operations that wait are coroutines; each has a `start...` form for screens, which begin them
/// and don't wait. State can change across any suspension point.
class AppState final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(
        velto::chat::AuthStatus::Kind authStatus READ authStatusKind NOTIFY authStatusChanged FINAL)
    /// The reason behind `authStatus` `Error`, else empty.
    Q_PROPERTY(QString authError READ authError NOTIFY authStatusChanged FINAL)
    /// Null while the open chat has not been answered by the service yet.
    Q_PROPERTY(QString conversationID READ conversationIDText NOTIFY conversationIDChanged FINAL)
    Q_PROPERTY(velto::chat::MessageListModel *messages READ messagesModel CONSTANT FINAL)
    Q_PROPERTY(
        QString inputDraft READ inputDraft WRITE setInputDraft NOTIFY inputDraftChanged FINAL)
    Q_PROPERTY(bool isStreaming READ isStreaming NOTIFY isStreamingChanged FINAL)
    /// Empty when absent.
    Q_PROPERTY(QString agentProgress READ agentProgress NOTIFY agentProgressChanged FINAL)
    /// Empty when absent.
    Q_PROPERTY(QString promptSuggestion READ promptSuggestion WRITE setPromptSuggestion NOTIFY
                   promptSuggestionChanged FINAL)
    Q_PROPERTY(bool hasError READ hasError NOTIFY lastErrorChanged FINAL)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY lastErrorChanged FINAL)
    Q_PROPERTY(bool isLoadingConversation READ isLoadingConversation NOTIFY
                   isLoadingConversationChanged FINAL)
    Q_PROPERTY(int focusInputRequest READ focusInputRequest NOTIFY focusInputRequestChanged FINAL)
    Q_PROPERTY(int focusHistorySearchRequest READ focusHistorySearchRequest NOTIFY
                   focusHistorySearchRequestChanged FINAL)
    Q_PROPERTY(velto::agent::VeltoSettingsStore *veltoSettings READ veltoSettings CONSTANT FINAL)
    Q_PROPERTY(velto::agent::MarketplaceStore *marketplace READ marketplace CONSTANT FINAL)
    Q_PROPERTY(velto::workspace::WorkspaceStore *workspace READ workspaceStore CONSTANT FINAL)
    Q_PROPERTY(velto::workspace::AdminStore *admin READ admin CONSTANT FINAL)
    Q_PROPERTY(velto::workspace::ProfileStore *profile READ profile CONSTANT FINAL)
    Q_PROPERTY(Section selectedSection READ selectedSection WRITE setSelectedSection NOTIFY
                   selectedSectionChanged FINAL)

public:
    enum class Section {
        Chat,
        VeltoSettings,
        Integrations,
        Marketplace,
        Profile,
        Workspace,
        Admin
    };
    Q_ENUM(Section)

    /// What AppState can't make by itself. The references outlive it.
    struct Environment
    {
        platform::SecretStore &secrets;
        platform::URLOpener &browser;
        QUrl baseURL;
        QString cacheFile;
    };

    explicit AppState(const Environment &environment, QObject *parent = nullptr);
    /// Ends what is running and leaves the session as it is: nobody is signed out by it.
    ~AppState() override;

    [[nodiscard]] const AuthStatus &authStatus() const { return m_authStatus; }
    [[nodiscard]] AuthStatus::Kind authStatusKind() const { return m_authStatus.kind(); }
    [[nodiscard]] QString authError() const { return m_authStatus.errorText(); }
    [[nodiscard]] const std::optional<QString> &conversationID() const { return m_conversationID; }
    [[nodiscard]] QString conversationIDText() const
    {
        return m_conversationID.value_or(QString());
    }
    [[nodiscard]] MessageListModel *messagesModel() { return &m_messages; }
    [[nodiscard]] const QList<ChatMessage> &messages() const { return m_messages.messages(); }
    [[nodiscard]] const QString &inputDraft() const { return m_inputDraft; }
    [[nodiscard]] bool isStreaming() const { return m_isStreaming; }
    [[nodiscard]] const QString &agentProgress() const { return m_agentProgress; }
    [[nodiscard]] const QString &promptSuggestion() const { return m_promptSuggestion; }
    [[nodiscard]] const std::optional<ChatErrorState> &lastError() const { return m_lastError; }
    [[nodiscard]] bool hasError() const { return m_lastError.has_value(); }
    [[nodiscard]] QString errorMessage() const;
    /// The history; absent until the first answer.
    [[nodiscard]] const std::optional<QList<service::ConversationSummary>> &conversations() const
    {
        return m_conversations;
    }
    [[nodiscard]] bool isLoadingConversation() const { return m_isLoadingConversation; }
    [[nodiscard]] int focusInputRequest() const { return m_focusInputRequest; }
    [[nodiscard]] int focusHistorySearchRequest() const { return m_focusHistorySearchRequest; }
    [[nodiscard]] Section selectedSection() const { return m_selectedSection; }
    [[nodiscard]] bool isDrawerOpen() const { return m_isDrawerOpen; }
    [[nodiscard]] std::optional<Section> pushedSection() const { return m_pushedSection; }
    [[nodiscard]] bool didBootstrap() const { return m_didBootstrap; }
    [[nodiscard]] std::optional<service::Workspace> currentWorkspace() const;
    [[nodiscard]] bool canManageWorkspace() const;

    [[nodiscard]] auth::AuthClient &auth() { return m_auth; }
    [[nodiscard]] service::APIClient &api() { return m_api; }
    [[nodiscard]] ChatStream &chat() { return m_chat; }
    [[nodiscard]] agent::VeltoSettingsStore *veltoSettings() { return &m_veltoSettings; }
    [[nodiscard]] agent::MarketplaceStore *marketplace() { return &m_marketplace; }
    [[nodiscard]] workspace::WorkspaceStore *workspaceStore() { return &m_workspace; }
    [[nodiscard]] workspace::AdminStore *admin() { return &m_admin; }
    [[nodiscard]] workspace::ProfileStore *profile() { return &m_profile; }

    void setInputDraft(const QString &draft);
    void setPromptSuggestion(const QString &suggestion);
    void setSelectedSection(Section section);
    Q_INVOKABLE void requestInputFocus();
    Q_INVOKABLE void requestHistorySearchFocus();

    // --- One streaming run (appstate_run.cpp)

    /// Sends the composer's text, unless it is blank or a run is in progress.
    QCoro::Task<void> sendDraft();
    /// Cancels the run; the run itself writes the result.
    Q_INVOKABLE void stopStreaming();
    Q_INVOKABLE void dismissError();
    /// Opens what a message links to: our own links here, what is http, https or mailto with the
    /// desktop's program, nothing else.
    Q_INVOKABLE void openLink(const QUrl &url);
    /// For what a player asks of the service; empty when there is none.
    [[nodiscard]] Q_INVOKABLE QString currentAccessToken() const;

    // --- Other ways of asking (appstate_branching.cpp); none does anything during a run

    /// Asks for an answer to another version of the user message `id`.
    QCoro::Task<void> editMessage(QUuid id, QString text);
    /// Shows the version `index` of the user message `id`; asks nobody.
    Q_INVOKABLE void switchBranch(const QUuid &id, int index);
    /// Drops the last answer and asks for another.
    QCoro::Task<void> regenerate();
    /// Asks for more of the answer that stands last.
    QCoro::Task<void> continueGeneration();

    // --- The session and its conversations (appstate_lifecycle.cpp)

    /// Shows the cached conversation, then continues the session; runs once until it has ended.
    QCoro::Task<void> bootstrap();
    QCoro::Task<void> signIn();
    QCoro::Task<void> signOut();
    QCoro::Task<void> refreshConversations();
    Q_INVOKABLE void newConversation();
    QCoro::Task<void> selectConversation(QString id);
    QCoro::Task<void> stepConversation(int offset);
    QCoro::Task<void> renameConversation(QString id, QString title);
    QCoro::Task<void> deleteConversation(QString id);
    /// Absent on success, else why it failed. Success includes the attempt to load the profile.
    QCoro::Task<std::optional<QString>> switchWorkspace(QString workspaceId);
    void applyMe(service::Me me);
    /// "new" opens an empty chat, "chat" a conversation; anything else is dropped.
    QCoro::Task<void> handleDeepLink(QUrl url);

    Q_INVOKABLE void startSendDraft() { sendDraft(); }
    Q_INVOKABLE void startEditMessage(const QUuid &id, const QString &text)
    {
        editMessage(id, text);
    }
    Q_INVOKABLE void startRegenerate() { regenerate(); }
    Q_INVOKABLE void startContinueGeneration() { continueGeneration(); }
    Q_INVOKABLE void startBootstrap() { bootstrap(); }
    Q_INVOKABLE void startSignIn() { signIn(); }
    Q_INVOKABLE void startSignOut() { signOut(); }
    Q_INVOKABLE void startRefreshConversations() { refreshConversations(); }
    Q_INVOKABLE void startSelectConversation(const QString &id) { selectConversation(id); }
    Q_INVOKABLE void startStepConversation(int offset) { stepConversation(offset); }
    Q_INVOKABLE void startRenameConversation(const QString &id, const QString &title)
    {
        renameConversation(id, title);
    }
    Q_INVOKABLE void startDeleteConversation(const QString &id) { deleteConversation(id); }

signals:
    void authStatusChanged();
    void conversationIDChanged();
    void inputDraftChanged();
    void isStreamingChanged();
    void agentProgressChanged();
    void promptSuggestionChanged();
    void lastErrorChanged();
    void conversationsChanged();
    void isLoadingConversationChanged();
    void focusInputRequestChanged();
    void focusHistorySearchRequestChanged();
    void selectedSectionChanged();

private:
    /// Lets a coroutine find out, after a wait, that this object has gone meanwhile.
    using Life = std::weak_ptr<const char>;

    void setAuthStatus(AuthStatus status);
    void setConversationID(std::optional<QString> id);
    void setStreaming(bool streaming);
    void setAgentProgress(const QString &progress);
    void setLastError(std::optional<ChatErrorState> error);
    void setConversations(QList<service::ConversationSummary> conversations);
    void setLoadingConversation(bool loading);

    /// A run into the last message of `next`; nothing without a list.
    QCoro::Task<void> ask(std::optional<QList<ChatMessage>> next);
    QCoro::Task<void> runStream(int index);
    QCoro::Task<void> consumeRun(int index, std::stop_token stop);
    /// False when the run ends with this event.
    bool take(const ChatStreamEvent &event, int index);
    void stopRun(int index);
    void failRun(const base::Failure &failure, int index);
    void expireSession();
    void reportChatError(const QString &text);
    void saveCache() const;

    QCoro::Task<void> tearDown();
    QCoro::Task<void> forgetRefreshToken();
    void resetStores();

    AuthStatus m_authStatus;
    std::optional<QString> m_conversationID;
    MessageListModel m_messages;
    QString m_inputDraft;
    bool m_isStreaming = false;
    QString m_agentProgress;
    QString m_promptSuggestion;
    std::optional<ChatErrorState> m_lastError;
    std::optional<QList<service::ConversationSummary>> m_conversations;
    bool m_isLoadingConversation = false;
    int m_focusInputRequest = 0;
    int m_focusHistorySearchRequest = 0;
    Section m_selectedSection = Section::Chat;
    bool m_isDrawerOpen = false;
    std::optional<Section> m_pushedSection;

    platform::URLOpener &m_browser;
    QString m_cacheFile;
    service::Transport m_transport;
    auth::TokenStore m_tokens;
    auth::AuthClient m_auth;
    service::APIClient m_api;
    ChatStream m_chat;
    agent::VeltoSettingsStore m_veltoSettings;
    agent::MarketplaceStore m_marketplace;
    workspace::WorkspaceStore m_workspace;
    workspace::AdminStore m_admin;
    workspace::ProfileStore m_profile;
    bool m_didBootstrap = false;
    std::optional<std::stop_source> m_streamTask;
    std::shared_ptr<const char> m_life = std::make_shared<const char>();
};

} // namespace velto::chat
