// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/transport.h"
#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <gtest/gtest.h>

namespace velto::service
{

using Kind = base::TransportError::Kind;

inline HTTPRequest requestTo(const QUrl &url, const QByteArray &method = "GET",
                             std::optional<QByteArray> body = {})
{
    HTTPRequest request;
    request.method = method;
    request.url = url;
    request.body = std::move(body);
    return request;
}

template<typename T>
[[nodiscard]] std::optional<Kind> kindOf(const base::Result<T> &result)
{
    if (result)
        return std::nullopt;
    const auto *error = std::get_if<base::TransportError>(&result.error());
    return error != nullptr ? std::optional(error->kind) : std::nullopt;
}

class TransportTest : public testing::Test
{
protected:
    base::Result<HTTPResponse> send(HTTPRequest request)
    {
        return test::await(m_transport.send(std::move(request)));
    }

    test::ScriptedServer m_server;
    Transport m_transport;
};

} // namespace velto::service
