// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "support/interleaving.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace velto::test
{

UnreliableService::UnreliableService(ScriptedServer &server, unsigned seed)
    : m_server(server)
    , m_random(seed)
{}

void UnreliableService::serve(const QByteArray &path, std::function<QByteArray(int)> body)
{
    m_server.on(path, [this, path, body = std::move(body)](const RecordedRequest &,
                                                           const Exchange &exchange) {
        m_waiting.append({path, body, exchange});
    });
}

int UnreliableService::pick(int limit)
{
    return std::uniform_int_distribution<int>(0, limit - 1)(m_random);
}

void UnreliableService::answerOne()
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

Interleaving::Interleaving(UnreliableService &service, QList<WatchedField> fields)
    : m_service(service)
    , m_fields(std::move(fields))
    , m_numbers(m_fields.size())
{}

void Interleaving::run(int steps, const QList<std::function<void()>> &operations,
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

void Interleaving::abandon(const QList<std::function<void()>> &operations,
                           const std::function<void()> &destroy)
{
    for (const std::function<void()> &start : operations)
        start();
    for (int turns = m_service.pick(30); turns > 0; --turns) {
        m_service.answerOne();
        QCoreApplication::processEvents();
    }
    destroy();
    EXPECT_TRUE(finish());
}

bool Interleaving::finish()
{
    return waitUntil([this] {
        m_service.answerOne();
        return *m_running == 0;
    });
}

void Interleaving::check(bool wasReset)
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

} // namespace velto::test
