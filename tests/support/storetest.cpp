// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "support/storetest.h"

#include <algorithm>

namespace velto::test
{

ScriptedServer::Handler byMethod(const QMap<QByteArray, ScriptedServer::Handler> &answers)
{
    return [=](const RecordedRequest &request, const Exchange &exchange) {
        answers.value(request.method, answer(405))(request, exchange);
    };
}

StoreTest::StoreTest()
{
    api.setAccessToken(QStringLiteral("token"));
}

StoreTest::~StoreTest() = default;

QList<QByteArray> StoreTest::asked()
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

QList<QByteArray> StoreTest::askedInAnyOrder()
{
    QList<QByteArray> lines = asked();
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::shared_ptr<QList<Exchange>> StoreTest::hold(const QByteArray &path)
{
    const auto waiting = std::make_shared<QList<Exchange>>();
    server.on(path, [waiting](const RecordedRequest &, const Exchange &exchange) {
        waiting->append(exchange);
    });
    return waiting;
}

} // namespace velto::test
