// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/auth/consent.h"

#include "local/auth/secrets.h"

#include <algorithm>

namespace velto::local
{

namespace
{
constexpr std::int64_t PageSeconds = 600;
constexpr std::size_t MostPending = 256;
} // namespace

ConsentRequests::ConsentRequests(Clock clock)
    : m_clock(std::move(clock))
{}

std::string ConsentRequests::add(Consent consent)
{
    const std::lock_guard guard(m_mutex);
    const std::int64_t now = m_clock();
    std::erase_if(m_pending, [now](const auto &entry) { return entry.second.expiresAt <= now; });
    if (m_pending.size() >= MostPending)
        m_pending.erase(std::min_element(m_pending.begin(), m_pending.end(),
                                         [](const auto &left, const auto &right) {
                                             return left.second.expiresAt < right.second.expiresAt;
                                         }));
    std::string id = randomSecret();
    m_pending.emplace(id, Pending{std::move(consent), now + PageSeconds});
    return id;
}

std::optional<Consent> ConsentRequests::take(const std::string &id)
{
    const std::lock_guard guard(m_mutex);
    const auto entry = m_pending.find(id);
    if (entry == m_pending.end())
        return std::nullopt;
    Pending pending = std::move(entry->second);
    m_pending.erase(entry);
    if (pending.expiresAt <= m_clock())
        return std::nullopt;
    return std::move(pending.consent);
}

} // namespace velto::local
