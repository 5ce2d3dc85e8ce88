// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <httplib.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velto::local
{

/// Who makes a request, as its access token says.
struct Caller
{
    std::string userId;
    /// The workspace that the user is in at the moment; empty when they belong to none.
    std::string workspaceId;
    /// May look after the whole service.
    bool administrator = false;
};

/// What a handler gets: the request, who makes it where a token is wanted, the values of the path's
/// placeholders in their order, and the whole body, which is never longer than the route allows.
struct Call
{
    const httplib::Request &request;
    Caller caller;
    std::vector<std::string> captures;
    std::string body;
};

using Handler = std::function<void(const Call &, httplib::Response &)>;

enum class Access {
    Open,
    Bearer,
    /// Wants the token of an administrator of the service.
    Administrator,
};

/// One endpoint. `pattern` holds literal segments, `{name}` for exactly one segment and, at the
/// end, `{name...}` for all that follows. A GET route answers HEAD as well.
struct Route
{
    std::string method;
    std::string pattern;
    Access access = Access::Bearer;
    std::size_t bodyLimit = 0;
    Handler handler;
};

/// The placeholders' values when `path` fits `pattern`; false otherwise. A placeholder never
/// takes an empty value.
[[nodiscard]] bool matchPath(std::string_view pattern, std::string_view path,
                             std::vector<std::string> &captures);

} // namespace velto::local
