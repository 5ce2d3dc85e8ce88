// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QHash>
#include <QSet>

#include <gtest/gtest.h>

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
    UnreliableService(ScriptedServer &server, unsigned seed)
        : m_server(server)
        , m_random(seed)
    {}

    /// `body` makes a proper answer out of a number that no other answer has.
    void serve(const QByteArray &path, std::function<QByteArray(int)> body)
    {
        m_server.on(path, [this, path, body = std::move(body)](const RecordedRequest &,
                                                               const Exchange &exchange) {
            m_waiting.append({path, body, exchange});
        });
    }

    /// Below `limit`.
    [[nodiscard]] int pick(int limit)
    {
        return std::uniform_int_distribution<int>(0, limit - 1)(m_random);
    }

    /// Answers one of the waiting requests, if there are any.
    void answerOne()
    {
        if (m_waiting.isEmpty())
            return;
        const Waiting next = m_waiting.takeAt(pick(static_cast<int>(m_waiting.size())));
        switch (pick(8)) {
        case 0:
            return next.exchange.respond(500, "out of order");
        case 1:
            return next.exchange.respond(403, "not yours");
        case 2:
            return next.exchange.respond(200, R"({"neither":["here"],"nor":"there"})");
        case 3:
            return next.exchange.reset();
        case 4:
            return next.exchange.respond(401, "expired");
        default:
            ++m_number;
            m_given[next.path].insert(m_number);
            return next.exchange.respond(200, next.body(m_number));
        }
    }

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
    Interleaving(UnreliableService &service, QList<WatchedField> fields)
        : m_service(service)
        , m_fields(std::move(fields))
        , m_numbers(m_fields.size())
    {}

    template<typename T>
    void start(QCoro::Task<T> task)
    {
        ++*m_running;
        count(std::move(task), m_running);
    }

    /// `operations` are chosen from at random, `reset` now and then; `isLoading` tells the flag.
    void run(int steps, const QList<std::function<void()>> &operations,
             const std::function<void()> &reset, const std::function<bool()> &isLoading)
    {
        for (int step = 0; step < steps; ++step) {
            const int dice = m_service.pick(20);
            if (dice < 8)
                operations[m_service.pick(static_cast<int>(operations.size()))]();
            else if (dice < 19)
                m_service.answerOne();
            else
                reset();
            check(dice == 19);
            QCoreApplication::processEvents();
            check(false);
            if (*m_running == 0) {
                ASSERT_FALSE(isLoading());
            }
        }
        ASSERT_TRUE(finish());
        EXPECT_FALSE(isLoading());
        check(false);
    }

    /// Answers until every operation has come to its end.
    [[nodiscard]] bool finish()
    {
        return waitUntil([this] {
            m_service.answerOne();
            return *m_running == 0;
        });
    }

private:
    template<typename T>
    static QCoro::Task<void> count(QCoro::Task<T> task, std::shared_ptr<int> running)
    {
        co_await std::move(task);
        --*running;
    }

    void check(bool wasReset)
    {
        for (qsizetype i = 0; i < m_fields.size(); ++i) {
            const WatchedField &field = m_fields[i];
            const std::optional<int> number = field.number();
            if (wasReset)
                ASSERT_FALSE(number.has_value()) << field.path.constData();
            else if (!number)
                ASSERT_TRUE(!m_numbers[i] || field.mayVanish) << field.path.constData();
            else
                ASSERT_TRUE(number == m_numbers[i] || m_service.hasGiven(field.path, *number))
                    << field.path.constData() << " shows " << *number;
            m_numbers[i] = number;
        }
    }

    UnreliableService &m_service;
    QList<WatchedField> m_fields;
    QList<std::optional<int>> m_numbers;
    std::shared_ptr<int> m_running = std::make_shared<int>(0);
};

} // namespace velto::test
