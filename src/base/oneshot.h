// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

// Qt's moc can't read <coroutine> as the first header of all.
#include <QtGlobal>

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace velto::base
{

/// A value that arrives once, and any number of coroutines that wait for it.
///
/// Copies share the value. All of it happens on one thread: `resolve` resumes the waiters before it
/// returns, in the order in which they came. Whoever makes a OneShot must resolve it on every path,
/// the destructor's included, or its waiters stay suspended for good.
template<typename T>
class OneShot final
{
    struct State
    {
        std::optional<T> value;
        std::vector<std::coroutine_handle<>> waiters;
    };

public:
    class Awaiter final
    {
    public:
        explicit Awaiter(std::shared_ptr<State> state)
            : m_state(std::move(state))
        {}
        [[nodiscard]] bool await_ready() const { return m_state->value.has_value(); }
        void await_suspend(std::coroutine_handle<> waiter) { m_state->waiters.push_back(waiter); }
        [[nodiscard]] T await_resume() const { return *m_state->value; }

    private:
        std::shared_ptr<State> m_state;
    };

    [[nodiscard]] bool isResolved() const { return m_state->value.has_value(); }

    /// The first call counts; later ones change nothing and give false.
    bool resolve(T value)
    {
        if (isResolved())
            return false;
        const std::shared_ptr<State> state = m_state; // a waiter may destroy this object
        state->value = std::move(value);
        for (const auto waiter : std::exchange(state->waiters, {}))
            waiter.resume();
        return true;
    }

    [[nodiscard]] Awaiter operator co_await() const { return Awaiter(m_state); }

private:
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace velto::base
