// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/agent/chatendpoint.h"

#include "local/agent/recorder.h"
#include "local/auth/secrets.h"
#include "local/http/reply.h"
#include "local/store/conversationendpoint.h"

#include <condition_variable>
#include <mutex>

namespace velto::local
{

using nlohmann::json;

namespace
{

// How soon a stop is noticed while nothing is being sent.
constexpr std::chrono::nanoseconds GlanceInterval = std::chrono::milliseconds(20);

bool writeFrame(httplib::DataSink &sink, const json &frame)
{
    const std::string line = "data: " + toText(frame) + "\n\n";
    return sink.write(line.data(), line.size());
}

// Passes an answer on to one client, and keeps what was sent.
class StreamSink final : public AnswerSink
{
public:
    StreamSink(httplib::DataSink &sink, std::stop_token stop)
        : m_sink(sink)
        , m_stop(std::move(stop))
    {}

    bool send(const AgentEvent &event) override
    {
        // A failure is told only once what came before it is stored.
        if (const auto *failed = std::get_if<Failed>(&event)) {
            m_failure = *failed;
            return true;
        }
        if (!m_sink.is_writable() || !writeFrame(m_sink, frameOf(event)))
            return false;
        m_recorder.record(event);
        return true;
    }

    bool pause(std::chrono::nanoseconds time) override
    {
        const auto end = std::chrono::steady_clock::now() + time;
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any stopped;
        while (!m_stop.stop_requested() && m_sink.is_writable()) {
            const auto now = std::chrono::steady_clock::now();
            if (now >= end)
                return true;
            stopped.wait_until(lock, m_stop, std::min(end, now + GlanceInterval),
                               [] { return false; });
        }
        return false;
    }

    [[nodiscard]] const json &parts() const { return m_recorder.parts(); }
    [[nodiscard]] const std::optional<Failed> &failure() const { return m_failure; }

private:
    httplib::DataSink &m_sink;
    std::stop_token m_stop;
    AnswerRecorder m_recorder;
    std::optional<Failed> m_failure;
};

std::vector<SpokenTurn> spoken(const std::vector<Turn> &turns)
{
    std::vector<SpokenTurn> history;
    history.reserve(turns.size());
    for (const Turn &turn : turns)
        history.push_back({turn.role == "user", plainText(turn)});
    return history;
}

} // namespace

/// A conversation that waits for its answer.
struct ChatEndpoint::Question
{
    OpenConversation conversation;
    std::string workspaceId;
    std::string model;
};

ChatEndpoint::ChatEndpoint(ConversationStore &store, Agent &agent, const Settings &settings,
                           UsageLedger &usage)
    : m_store(store)
    , m_agent(agent)
    , m_settings(settings)
    , m_usage(usage)
{}

void ChatEndpoint::chat(const Call &call, httplib::Response &response)
{
    const json body = parseBody(call.body);
    const auto turns =
        body.is_object() && body.contains("messages") ? readTurns(body["messages"]) : std::nullopt;
    if (!turns)
        return replyError(response, 400, "bad_body",
                          "The body must hold messages with a role and parts.");
    if (turns->empty())
        return replyError(response, 400, "no_messages", "There is no message to answer.");
    const std::string *id = textMember(body, "conversation_id");
    if (id == nullptr && body.contains("conversation_id"))
        return replyError(response, 400, "bad_body", "The conversation_id must be a text.");
    if (id != nullptr && !m_store.contains(call.caller, *id))
        return replyUnknownConversation(response);
    const auto conversation =
        m_store.accept(call.caller, id != nullptr ? *id : std::string(), *turns);
    if (!conversation)
        return replyError(response, 500, "storage", "The conversation could not be stored.");
    response.status = 200;
    response.set_header("x-conversation-id", conversation->id);
    response.set_header("Cache-Control", "no-store");
    response.set_chunked_content_provider(
        "text/event-stream",
        [this, question = Question{*conversation, call.caller.workspaceId,
                                   m_settings.effectiveModel(call.caller)}](
            std::size_t, httplib::DataSink &sink) { return stream(question, sink); });
}

void ChatEndpoint::keep(const Question &question, const json &answer)
{
    if (!answer.empty())
        m_store.addAnswer(question.conversation, {randomId("msg_"), "assistant", answer});
    m_usage.record({question.workspaceId, "chat_ui", question.model,
                    estimateTokens(question.conversation.turns, answer), modelCalls(answer)});
}

bool ChatEndpoint::stream(const Question &question, httplib::DataSink &sink)
{
    const std::stop_token stop = m_stop.get_token();
    StreamSink answer(sink, stop);
    const Outcome outcome = m_agent.answer(spoken(question.conversation.turns), answer, stop);
    keep(question, answer.parts());
    if (outcome == Outcome::Stopped || outcome == Outcome::Dropped)
        return false;
    const json last = answer.failure() ? frameOf(*answer.failure()) : json{{"type", "finish"}};
    if (!writeFrame(sink, last))
        return false;
    sink.done();
    return true;
}

} // namespace velto::local
