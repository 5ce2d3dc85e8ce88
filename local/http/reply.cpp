// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/http/reply.h"

#include <algorithm>
#include <charconv>

namespace velto::local
{

using nlohmann::json;

namespace
{
constexpr int DeepestBody = 32;
constexpr std::int64_t DefaultLimit = 50;
constexpr std::int64_t GreatestLimit = 200;
} // namespace

std::string toText(const json &value)
{
    return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

json parseBody(std::string_view body)
{
    bool tooDeep = false;
    const auto bounded = [&tooDeep](int depth, json::parse_event_t, json &) {
        tooDeep = tooDeep || depth > DeepestBody;
        return depth <= DeepestBody;
    };
    json value = json::parse(body, bounded, false);
    return tooDeep ? json(json::value_t::discarded) : value;
}

OrRefusal<std::int64_t> readLimit(const httplib::Request &request)
{
    if (!request.has_param("limit"))
        return DefaultLimit;
    const std::string text = request.get_param_value("limit");
    std::int64_t limit = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), limit);
    if (error != std::errc() || end != text.data() + text.size() || limit < 1)
        return tl::unexpected(Refusal{400, "bad_limit", "The limit must be a positive number."});
    return std::min(limit, GreatestLimit);
}

const std::string *textMember(const json &object, std::string_view key)
{
    if (!object.is_object())
        return nullptr;
    const auto member = object.find(key);
    return member == object.end() ? nullptr : member->get_ptr<const std::string *>();
}

void replyJson(httplib::Response &response, int status, const json &value)
{
    response.status = status;
    response.set_content(toText(value), "application/json");
}

void replyError(httplib::Response &response, int status, std::string_view code,
                std::string_view message)
{
    replyJson(response, status, {{"error", code}, {"message", message}});
}

void replyAnswer(httplib::Response &response, const JsonAnswer &answer)
{
    if (!answer)
        replyError(response, answer.error().status, answer.error().code, answer.error().message);
    else if (answer->is_null())
        response.status = 204;
    else
        replyJson(response, 200, *answer);
}

} // namespace velto::local
