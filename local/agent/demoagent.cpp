// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/agent/demoagent.h"

#include "local/agent/pieces.h"

#include <algorithm>

namespace velto::local
{

namespace
{

constexpr int SlowRate = 2;
// A tool takes as long as this many deltas.
constexpr int ToolDeltas = 12;
// One of several at once takes longer, so that it can be looked at.
constexpr int LongToolDeltas = 120;

// Plays the steps of one answer. Every function gives back whether to go on.
class Player final
{
public:
    Player(AnswerSink &sink, const std::stop_token &stop, int rate)
        : m_sink(sink)
        , m_stop(stop)
        , m_interval(rate > 0 ? std::chrono::nanoseconds(std::chrono::seconds(1)) / rate
                              : std::chrono::nanoseconds(0))
        , m_next(std::chrono::steady_clock::now())
    {}

    Outcome play(const Script &script)
    {
        for (const Step &step : script.steps) {
            if (!std::visit([this](const auto &one) { return run(one); }, step))
                return m_outcome;
        }
        return Outcome::Finished;
    }

private:
    bool send(const AgentEvent &event) { return !m_stop.stop_requested() && m_sink.send(event); }

    // Keeps to a fixed beat, so that a late delta doesn't delay those after it.
    bool wait(int deltas)
    {
        m_next += m_interval * deltas;
        const auto rest = m_next - std::chrono::steady_clock::now();
        if (rest.count() > 0)
            return m_sink.pause(rest);
        m_next -= rest;
        return true;
    }

    bool run(const SayStep &step)
    {
        Pieces pieces(step.markdown);
        for (auto piece = pieces.next(); !piece.empty(); piece = pieces.next()) {
            if (!wait(1) || !send(TextDelta{std::string(piece)}))
                return false;
        }
        return true;
    }

    bool begin(const ToolStep &step, const std::string &id)
    {
        return send(ToolStarted{id, step.name}) && wait(1) && send(ToolInput{id, step.input});
    }

    bool end(const ToolStep &step, const std::string &id, int deltas)
    {
        if (!wait(deltas))
            return false;
        return step.error ? send(ToolFailed{id, *step.error}) : send(ToolOutput{id, step.output});
    }

    bool run(const ToolStep &step)
    {
        const std::string id = nextCall();
        return begin(step, id) && end(step, id, ToolDeltas);
    }

    bool run(const ToolsStep &step)
    {
        std::vector<std::string> ids;
        for (const ToolStep &tool : step.tools) {
            ids.push_back(nextCall());
            if (!begin(tool, ids.back()))
                return false;
        }
        for (std::size_t i = 0; i < ids.size(); ++i) {
            if (!end(step.tools[i], ids[i], LongToolDeltas))
                return false;
        }
        return true;
    }

    std::string nextCall() { return "call_" + std::to_string(++m_calls); }

    bool run(const ProgressStep &step) { return send(Progress{step.summary}); }
    bool run(const SuggestStep &step) { return send(Suggestion{step.prompt}); }

    bool run(const FailStep &step)
    {
        if (send(Failed{step.message}))
            m_outcome = Outcome::Failed;
        return false;
    }

    bool run(const DropStep &)
    {
        m_outcome = Outcome::Dropped;
        return false;
    }

    AnswerSink &m_sink;
    const std::stop_token &m_stop;
    std::chrono::nanoseconds m_interval;
    std::chrono::steady_clock::time_point m_next;
    int m_calls = 0;
    Outcome m_outcome = Outcome::Stopped;
};

} // namespace

DemoAgent::DemoAgent(int rate)
    : m_rate(rate)
{}

Outcome DemoAgent::answer(const std::vector<SpokenTurn> &history, AnswerSink &sink,
                          const std::stop_token &stop)
{
    const auto last = std::find_if(history.rbegin(), history.rend(),
                                   [](const SpokenTurn &turn) { return turn.fromUser; });
    const Script script = scriptFor(last == history.rend() ? std::string() : last->text);
    return Player(sink, stop, script.slow ? SlowRate : m_rate).play(script);
}

} // namespace velto::local
