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

/// What a handler gets: the request, the values of the path's placeholders in their order, and
/// the whole body, which is never longer than the route allows.
struct Call
{
    const httplib::Request &request;
    std::vector<std::string> captures;
    std::string body;
};

using Handler = std::function<void(const Call &, httplib::Response &)>;

enum class Access { Open, Bearer };

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
