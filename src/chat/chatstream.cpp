// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/chatstream.h"

#include "base/log.h"
#include "base/oneshot.h"
#include "base/text.h"
#include "chat/linereader.h"

#include <QPointer>

#include <deque>

namespace velto::chat
{
namespace
{

/// An error body is read this far, and shown whole only when that is not more than 4096 bytes.
constexpr qsizetype errorBodyLimit = 4097;

struct WirePart
{
    QString type;
    QString text;
    static base::json::Fields jsonFields()
    {
        using base::json::field;
        static constexpr std::array fields{field<&WirePart::type>("type"),
                                           field<&WirePart::text>("text")};
        return fields;
    }
};

struct WireMessage
{
    QString id;
    QString role;
    QList<WirePart> parts;
    static base::json::Fields jsonFields()
    {
        using base::json::field;
        static constexpr std::array fields{field<&WireMessage::id>("id"),
                                           field<&WireMessage::role>("role"),
                                           field<&WireMessage::parts>("parts")};
        return fields;
    }
};

struct WireChat
{
    QList<WireMessage> messages;
    std::optional<QString> conversationID;
    static base::json::Fields jsonFields()
    {
        using base::json::field;
        static constexpr std::array fields{field<&WireChat::messages>("messages"),
                                           field<&WireChat::conversationID>("conversation_id")};
        return fields;
    }
};

using service::HTTPRequest;
using service::HTTPStream;

} // namespace

struct ChatEventSequence::State
{
    QPointer<service::APIClient> api;
    QByteArray body;
    std::chrono::milliseconds timeout{};
    ChatStream::ConversationIDCallback onConversationID;

    std::deque<ChatStreamEvent> events;
    std::optional<base::Failure> failure;
    bool finished = false;
    std::stop_source stop;
    std::optional<base::OneShot<std::monostate>> waiter;
    /// Passes a stop of the consumer on to the request.
    std::optional<std::stop_callback<std::function<void()>>> link;

    void wake()
    {
        if (auto waiting = std::exchange(waiter, {}))
            waiting->resolve({});
    }
    void finish(std::optional<base::Failure> with = {})
    {
        if (finished)
            return;
        finished = true;
        failure = std::move(with);
        wake();
    }
    void cancel()
    {
        stop.request_stop();
        finish();
    }
};

namespace
{

using StatePtr = std::shared_ptr<ChatEventSequence::State>;

/// The answer to the chat request, asked for a second time after a first 401.
QCoro::Task<base::Result<HTTPStream>> openStream(StatePtr state)
{
    const auto request = [&]() -> base::Result<HTTPRequest> {
        auto built = state->api->build("POST", QStringLiteral("/v1/chat"), state->body,
                                       QByteArrayLiteral("application/json"));
        if (built)
            built->timeout = state->timeout;
        return built;
    };
    auto first = request();
    if (!first)
        co_return tl::unexpected(first.error());
    auto answer = co_await state->api->transport().open(*first, state->stop.get_token());
    if (!answer || answer->head().status != 401 || !state->api)
        co_return answer;

    const auto tokens = co_await state->api->auth().refresh();
    if (!tokens)
        co_return tl::unexpected(tokens.error());
    if (!state->api)
        co_return base::fail(base::TransportError{base::TransportError::Kind::Cancelled, {}});
    state->api->setAccessToken(tokens->accessToken);
    auto second = request();
    if (!second)
        co_return tl::unexpected(second.error());
    co_return co_await state->api->transport().open(*second, state->stop.get_token());
}

QCoro::Task<base::ChatHTTPError> readError(HTTPStream &answer)
{
    QByteArray bytes;
    while (bytes.size() < errorBodyLimit) {
        const auto piece = co_await answer.read();
        if (!piece || piece->isEmpty())
            break;
        bytes += *piece;
    }
    bytes.truncate(errorBodyLimit);
    const int status = answer.head().status;
    const QString body = errorBodyText(bytes);
    base::logLine(QLatin1StringView("ChatStream"),
                  QStringLiteral("/v1/chat HTTP %1 — body: %2").arg(QString::number(status), body));
    co_return base::ChatHTTPError{status, body};
}

void yieldLine(ChatEventSequence::State &state, QByteArrayView line)
{
    std::optional<StreamFrame> frame = frameFromLine(line);
    if (!frame)
        return;
    std::optional<ChatStreamEvent> event = eventFrom(std::move(*frame));
    if (!event)
        return;
    state.events.push_back(std::move(*event));
    state.wake();
}

QCoro::Task<std::optional<base::Failure>> readEvents(StatePtr state, HTTPStream &answer)
{
    const std::stop_token stop = state->stop.get_token();
    LineReader lines;
    while (true) {
        const auto piece = co_await answer.read();
        if (!piece)
            co_return piece.error();
        if (piece->isEmpty())
            break;
        lines.append(*piece);
        while (!stop.stop_requested()) {
            const auto line = lines.next();
            if (!line)
                break;
            yieldLine(*state, *line);
        }
        if (stop.stop_requested())
            co_return std::nullopt;
    }
    if (const auto line = lines.rest())
        yieldLine(*state, *line);
    co_return std::nullopt;
}

QCoro::Task<void> produce(StatePtr state)
{
    auto answer = co_await openStream(state);
    if (!answer) {
        state->finish(answer.error());
        co_return;
    }
    if (answer->head().status != 200) {
        state->finish(co_await readError(*answer));
        co_return;
    }
    if (const auto id = answer->head().header("x-conversation-id"))
        state->onConversationID(QString::fromUtf8(*id));
    state->finish(co_await readEvents(state, *answer));
}

} // namespace

ChatEventSequence::ChatEventSequence(std::shared_ptr<State> state)
    : m_state(std::move(state))
{}

ChatEventSequence::ChatEventSequence(ChatEventSequence &&) noexcept = default;
ChatEventSequence &ChatEventSequence::operator=(ChatEventSequence &&) noexcept = default;

ChatEventSequence::~ChatEventSequence()
{
    if (!m_state)
        return;
    m_state->link.reset();
    m_state->cancel();
}

QCoro::Task<base::Result<std::optional<ChatStreamEvent>>> ChatEventSequence::next()
{
    const std::shared_ptr<State> state = m_state;
    while (state->events.empty() && !state->finished) {
        const base::OneShot<std::monostate> arrival = state->waiter.emplace();
        static_cast<void>(co_await arrival);
    }
    if (!state->events.empty()) {
        ChatStreamEvent event = std::move(state->events.front());
        state->events.pop_front();
        co_return std::optional(std::move(event));
    }
    if (const auto failure = std::exchange(state->failure, {}))
        co_return tl::unexpected(*failure);
    co_return std::nullopt;
}

ChatEventSequence ChatStream::stream(const QList<ChatMessage> &messages,
                                     const std::optional<QString> &conversationID,
                                     ConversationIDCallback onConversationID, std::stop_token stop)
{
    const auto state = std::make_shared<ChatEventSequence::State>();
    state->api = &m_api;
    state->timeout = m_timeout;
    state->onConversationID = std::move(onConversationID);
    ChatEventSequence sequence(state);
    auto body = chatRequestBody(messages, conversationID);
    if (!body) {
        state->finish(body.error());
        return sequence;
    }
    state->body = std::move(*body);
    state->link.emplace(std::move(stop), [weak = std::weak_ptr(state)] {
        if (const auto state = weak.lock())
            state->cancel();
    });
    if (!state->finished)
        produce(state);
    return sequence;
}

base::Result<QByteArray> chatRequestBody(const QList<ChatMessage> &messages,
                                         const std::optional<QString> &conversationID)
{
    WireChat chat{{}, conversationID};
    for (const ChatMessage &message : messages) {
        QString text = message.plainText();
        if (text.trimmed().isEmpty())
            continue;
        const bool isUser = message.role == ChatMessage::Role::User;
        chat.messages.append({base::uuidText(message.id),
                              isUser ? QStringLiteral("user") : QStringLiteral("assistant"),
                              {{QStringLiteral("text"), std::move(text)}}});
    }
    return base::json::encode(chat, base::json::Keys::Plain);
}

QString errorBodyText(QByteArrayView bytes)
{
    return base::utf8Text(bytes).value_or(QStringLiteral("<no body>")).trimmed();
}

} // namespace velto::chat
