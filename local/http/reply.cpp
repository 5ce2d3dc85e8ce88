// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/http/reply.h"

namespace velto::local
{

using nlohmann::json;

namespace
{
constexpr int DeepestBody = 32;
}

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

} // namespace velto::local
