// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace velto::local::test
{

using nlohmann::json;

namespace
{

bool isOfKind(const json &value, const std::string &kind)
{
    if (kind == "text")
        return value.is_string();
    if (kind == "int")
        return value.is_number_integer();
    if (kind == "number")
        return value.is_number();
    if (kind == "bool")
        return value.is_boolean();
    if (kind == "list")
        return value.is_array();
    if (kind == "texts")
        return value.is_array() && std::all_of(value.begin(), value.end(),
                                               [](const json &one) { return one.is_string(); });
    return kind == "object" && value.is_object();
}

} // namespace

std::string flawIn(const json &record, const std::string &shape)
{
    if (!record.is_object())
        return "no object: " + record.dump();
    std::set<std::string> expected;
    std::istringstream words(shape);
    for (std::string word; words >> word;) {
        const auto colon = word.find(':');
        const std::string key = word.substr(0, colon);
        std::string kind = word.substr(colon + 1);
        const bool optional = kind.ends_with('?');
        if (optional)
            kind.pop_back();
        expected.insert(key);
        if (!record.contains(key) || record[key].is_null()) {
            if (!optional)
                return "no " + key + " in " + record.dump();
        } else if (!isOfKind(record[key], kind)) {
            return key + " is no " + kind + " in " + record.dump();
        }
    }
    for (const auto &[key, value] : record.items()) {
        if (!expected.contains(key))
            return "unexpected " + key + " in " + record.dump();
    }
    return {};
}

std::string flawInList(const json &list, const std::string &shape)
{
    if (!list.is_array() || list.empty())
        return "no list with entries: " + list.dump();
    for (const json &record : list) {
        if (std::string flaw = flawIn(record, shape); !flaw.empty())
            return flaw;
    }
    return {};
}

json entryWith(const json &list, const std::string &key, const json &value)
{
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const json &entry) { return entry[key] == value; });
    return found == list.end() ? json() : *found;
}

void expectRefused(const Reply &reply, int status)
{
    EXPECT_EQ(reply.status, status) << reply.body;
    EXPECT_EQ(flawIn(reply.body, "error:text message:text"), "");
}

json latestAudit(const Visitor &visitor, const std::string &slug)
{
    return visitor.getJson("/v1/workspaces/" + slug + "/audit?limit=1")["entries"][0];
}

void switchTo(const Visitor &visitor, const std::string &workspaceId)
{
    const json body{{"workspace_id", workspaceId}};
    EXPECT_EQ(visitor.call("POST", "/v1/workspaces/switch", body).status, 200);
}

} // namespace velto::local::test
