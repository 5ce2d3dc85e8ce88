// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/auth/grants.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace velto::local
{

/// A sign-in that waits for the user's word.
struct Consent
{
    CodeRequest request;
    std::string state;
};

/// The consent pages that are open in a browser. Each has an id that its form gives back, good
/// once and for ten minutes, so that no other page can answer for the user. They live in memory:
/// after a restart the page has to be opened again. Safe from any thread.
class ConsentRequests final
{
public:
    explicit ConsentRequests(Clock clock);

    [[nodiscard]] std::string add(Consent consent);
    [[nodiscard]] std::optional<Consent> take(const std::string &id);

private:
    struct Pending
    {
        Consent consent;
        std::int64_t expiresAt;
    };

    Clock m_clock;
    std::mutex m_mutex;
    std::map<std::string, Pending> m_pending;
};

} // namespace velto::local
