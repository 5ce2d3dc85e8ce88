// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoroTask>

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>

/// Running coroutines to their end from a test, with a watchdog so that a hang is a failed test.
namespace velto::test
{

inline constexpr std::chrono::seconds watchdog{20};

/// Runs the event loop until `condition` holds; gives false when the watchdog bites first.
[[nodiscard]] inline bool waitUntil(const std::function<bool()> &condition,
                                    std::chrono::milliseconds limit = watchdog)
{
    const QDeadlineTimer deadline(limit);
    QTimer poll; // wakes the loop when what we wait for has no event of its own
    poll.start(5);
    QEventLoop loop;
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

namespace detail
{
template<typename T>
QCoro::Task<void> store(QCoro::Task<T> task, std::shared_ptr<std::optional<T>> out)
{
    *out = co_await std::move(task);
}

inline QCoro::Task<void> note(QCoro::Task<void> task, std::shared_ptr<bool> done)
{
    co_await std::move(task);
    *done = true;
}
} // namespace detail

template<typename T>
[[nodiscard]] T await(QCoro::Task<T> task)
{
    const auto out = std::make_shared<std::optional<T>>();
    const QCoro::Task<void> running = detail::store(std::move(task), out);
    if (!waitUntil([&] { return out->has_value(); }))
        throw std::runtime_error("watchdog: the task did not finish");
    return std::move(**out);
}

inline void await(QCoro::Task<void> task)
{
    const auto done = std::make_shared<bool>(false);
    const QCoro::Task<void> running = detail::note(std::move(task), done);
    if (!waitUntil([&] { return *done; }))
        throw std::runtime_error("watchdog: the task did not finish");
}

} // namespace velto::test
