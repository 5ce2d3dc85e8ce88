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

#include <memory>

namespace velto::test
{

/// Answers as `answers` says for the request's method; 405 for other methods.
[[nodiscard]] ScriptedServer::Handler
byMethod(const QMap<QByteArray, ScriptedServer::Handler> &answers);

/// A client that is signed in at a scripted service, for tests of a store.
class StoreTest : public testing::Test
{
protected:
    StoreTest();
    ~StoreTest() override;

    /// "GET /v1/me", "PUT /v1/settings {...}": what was asked since the last call, in order.
    [[nodiscard]] QList<QByteArray> asked();
    /// The same for requests that go out together, so that any of them may arrive first.
    [[nodiscard]] QList<QByteArray> askedInAnyOrder();

    /// Keeps requests of `path` waiting; gives where they wait.
    [[nodiscard]] std::shared_ptr<QList<Exchange>> hold(const QByteArray &path);

    ScriptedServer server;
    service::Transport transport;
    CountingRefresher auth;
    service::APIClient api{transport, auth, server.url()};

private:
    qsizetype m_read = 0;
};

} // namespace velto::test
