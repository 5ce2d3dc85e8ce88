// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "countingrefresher.h"
#include "service/apiclient.h"
#include "transporttest.h"

namespace velto::service
{

/// A client that is signed in with the token "old" at a scripted service.
class APIClientTest : public TransportTest
{
protected:
    APIClientTest() { m_api.setAccessToken(QStringLiteral("old")); }

    [[nodiscard]] const test::RecordedRequest &last() const { return m_server.requests().last(); }

    template<typename T>
    [[nodiscard]] static const T *failureOf(const auto &result)
    {
        return result ? nullptr : std::get_if<T>(&result.error());
    }

    test::CountingRefresher m_auth;
    APIClient m_api{m_transport, m_auth, m_server.url(QStringLiteral("/prefix"))};
};

} // namespace velto::service
