// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"
#include "chat/chatstreamevent.h"
#include "chat/message.h"
#include "service/apiclient.h"

#include <QCoroTask>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace velto::chat
{

/// The events of one streamed answer, in order, buffered without a bound. Dropping it ends the
/// request. Main thread only.
class ChatEventSequence final
{
public:
    struct State;

    explicit ChatEventSequence(std::shared_ptr<State> state);
    ChatEventSequence(ChatEventSequence &&) noexcept;
    ChatEventSequence &operator=(ChatEventSequence &&) noexcept;
    ~ChatEventSequence();

    /// The next event; absent at the end, which is also what a stopped sequence comes to once its
    /// buffer is empty; a failure, once, when the request or the reading failed. One call at a
    /// time.
    [[nodiscard]] QCoro::Task<base::Result<std::optional<ChatStreamEvent>>> next();

private:
    std::shared_ptr<State> m_state;
};

/// Posts a conversation and turns the streamed answer into events.
class ChatStream final
{
public:
    using ConversationIDCallback = std::function<void(QString)>;

    /// `api` outlives the stream and its sequences' requests.
    explicit ChatStream(service::APIClient &api)
        : m_api(api)
    {}

    /// One request. `onConversationID` receives the answer's conversation id before the first
    /// event. A stop through `stop` ends the sequence without a failure.
    [[nodiscard]] ChatEventSequence stream(const QList<ChatMessage> &messages,
                                           const std::optional<QString> &conversationID,
                                           ConversationIDCallback onConversationID,
                                           std::stop_token stop = {});

    /// How long the service may be silent; 60 seconds unless set.
    void setTimeout(std::chrono::milliseconds timeout) { m_timeout = timeout; }

private:
    service::APIClient &m_api;
    std::chrono::milliseconds m_timeout = std::chrono::seconds(60);
};

/// The request's body: the text of all turns that have any, and the conversation's id.
[[nodiscard]] base::Result<QByteArray>
chatRequestBody(const QList<ChatMessage> &messages, const std::optional<QString> &conversationID);

/// The text of an error answer's body: trimmed, or "<no body>" when it is not valid UTF-8.
[[nodiscard]] QString errorBodyText(QByteArrayView bytes);

} // namespace velto::chat
