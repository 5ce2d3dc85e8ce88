// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/http/route.h"

namespace velto::local
{

namespace
{

std::string_view takeSegment(std::string_view &rest)
{
    const auto slash = rest.find('/');
    const std::string_view segment = rest.substr(0, slash);
    rest = slash == std::string_view::npos ? std::string_view() : rest.substr(slash);
    return segment;
}

bool isPlaceholder(std::string_view segment)
{
    return segment.starts_with('{') && segment.ends_with('}');
}

} // namespace

bool matchPath(std::string_view pattern, std::string_view path, std::vector<std::string> &captures)
{
    captures.clear();
    while (!pattern.empty() && !path.empty()) {
        if (pattern.front() != '/' || path.front() != '/')
            return false;
        pattern.remove_prefix(1);
        path.remove_prefix(1);
        const std::string_view expected = takeSegment(pattern);
        if (expected.ends_with("...}")) {
            captures.emplace_back(path);
            return !path.empty();
        }
        const std::string_view actual = takeSegment(path);
        if (!isPlaceholder(expected)) {
            if (expected != actual)
                return false;
            continue;
        }
        if (actual.empty())
            return false;
        captures.emplace_back(actual);
    }
    return pattern.empty() && path.empty();
}

} // namespace velto::local
