// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/apiclient.h"
#include "service/countingrefresher.h"
#include "service/transport.h"
#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <QMap>

#include <gtest/gtest.h>

namespace velto::test
{

/// Answers as `answers` says for the request's method; 405 for other methods.
[[nodiscard]] inline ScriptedServer::Handler
byMethod(const QMap<QByteArray, ScriptedServer::Handler> &answers)
{
    return [=](const RecordedRequest &request, const Exchange &exchange) {
        answers.value(request.method, answer(405))(request, exchange);
    };
}

/// A client that is signed in at a scripted service, for tests of a store.
class StoreTest : public testing::Test
{
protected:
    StoreTest() { api.setAccessToken(QStringLiteral("token")); }

    /// "GET /v1/me", "PUT /v1/settings {...}": what was asked since the last call, in order.
    [[nodiscard]] QList<QByteArray> asked()
    {
        QList<QByteArray> lines;
        for (; m_read < server.requests().size(); ++m_read) {
            const RecordedRequest &request = server.requests()[m_read];
            EXPECT_EQ(request.header("Authorization"), "Bearer token");
            EXPECT_EQ(request.header("Content-Type").has_value(), !request.body.isEmpty());
            QByteArray line = request.method + ' ' + request.target;
            if (!request.body.isEmpty())
                line += ' ' + request.body;
            lines.append(line);
        }
        return lines;
    }
    /// The same for requests that go out together, so that any of them may arrive first.
    [[nodiscard]] QList<QByteArray> askedInAnyOrder()
    {
        QList<QByteArray> lines = asked();
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    /// Keeps requests of `path` waiting; gives where they wait.
    [[nodiscard]] std::shared_ptr<QList<Exchange>> hold(const QByteArray &path)
    {
        const auto waiting = std::make_shared<QList<Exchange>>();
        server.on(path, [waiting](const RecordedRequest &, const Exchange &exchange) {
            waiting->append(exchange);
        });
        return waiting;
    }

    ScriptedServer server;
    service::Transport transport;
    CountingRefresher auth;
    service::APIClient api{transport, auth, server.url()};

private:
    qsizetype m_read = 0;
};

} // namespace velto::test
