// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <QCoroTask>
#include <QHash>
#include <QSet>

#include <functional>
#include <memory>
#include <optional>
#include <random>

namespace velto::test
{

/// A service that answers each request at some later moment: properly, with an error, with
/// nonsense, or by hanging up. The seed decides which.
class UnreliableService final
{
public:
    UnreliableService(ScriptedServer &server, unsigned seed);

    /// `body` makes a proper answer out of a number that no other answer has.
    void serve(const QByteArray &path, std::function<QByteArray(int)> body);

    /// Below `limit`.
    [[nodiscard]] int pick(int limit);

    /// Answers one of the waiting requests, if there are any.
    void answerOne();

    /// Whether `number` went into a proper answer of `path`.
    [[nodiscard]] bool hasGiven(const QByteArray &path, int number) const
    {
        return m_given.value(path).contains(number);
    }
    [[nodiscard]] bool isIdle() const { return m_waiting.isEmpty(); }

private:
    struct Waiting
    {
        QByteArray path;
        std::function<QByteArray(int)> body;
        Exchange exchange;
    };

    ScriptedServer &m_server;
    std::mt19937 m_random;
    QList<Waiting> m_waiting;
    QHash<QByteArray, QSet<int>> m_given;
    int m_number = 0;
};

/// One field of a store: the number of the answer that it shows, or absent.
struct WatchedField
{
    QByteArray path; ///< Whose answers it shows.
    std::function<std::optional<int>()> number;
    /// It may also become absent without a reset.
    bool mayVanish = false;
};

/// Starts operations of a store, lets the service answer, resets, all in random order, and checks
/// after each step that a field only ever changes to what the service has sent for it.
class Interleaving final
{
public:
    Interleaving(UnreliableService &service, QList<WatchedField> fields);

    template<typename T>
    void start(QCoro::Task<T> task)
    {
        ++*m_running;
        count(std::move(task), m_running);
    }

    /// `operations` are chosen from at random, `reset` now and then; `isLoading` tells the flag.
    void run(int steps, const QList<std::function<void()>> &operations,
             const std::function<void()> &reset, const std::function<bool()> &isLoading);

    /// Starts all `operations`, lets some of them be answered, destroys their store, and answers
    /// the rest.
    void abandon(const QList<std::function<void()>> &operations,
                 const std::function<void()> &destroy);

    /// Answers until every operation has come to its end.
    [[nodiscard]] bool finish();

private:
    template<typename T>
    static QCoro::Task<void> count(QCoro::Task<T> task, std::shared_ptr<int> running)
    {
        co_await std::move(task);
        --*running;
    }

    void check(bool wasReset);

    UnreliableService &m_service;
    QList<WatchedField> m_fields;
    QList<std::optional<int>> m_numbers;
    std::shared_ptr<int> m_running = std::make_shared<int>(0);
};

} // namespace velto::test
