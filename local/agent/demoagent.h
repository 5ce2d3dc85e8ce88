// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/agent/agent.h"
#include "local/agent/script.h"

namespace velto::local
{

/// Plays written answers. Deterministic: the same prompt gives the same events.
class DemoAgent final : public Agent
{
public:
    /// `rate` is in deltas per second; 0 is as fast as the receiver reads.
    explicit DemoAgent(int rate);

    Outcome answer(const std::vector<SpokenTurn> &history, AnswerSink &sink,
                   const std::stop_token &stop) override;

private:
    int m_rate;
};

} // namespace velto::local
