// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/library/toolcatalog.h"

#include "local/seed/tools.h"

namespace velto::local
{

using nlohmann::json;

namespace
{

json toolRecord(const seed::Tool &tool, bool groupAvailable, std::string_view source)
{
    return {{"name", tool.name},
            {"description", tool.description},
            {"available", groupAvailable && tool.available},
            {"source", source}};
}

} // namespace

ToolCatalog::ToolCatalog(Database &database, const Integrations &integrations)
    : m_database(database)
    , m_integrations(integrations)
{}

json ToolCatalog::groups(const Caller &caller) const
{
    json groups = json::array();
    for (const seed::ToolGroup &group : seed::toolGroups()) {
        const Provider *provider = findProvider(group.provider);
        const bool available = provider != nullptr
                                   ? m_integrations.isConnected(caller.workspaceId, provider->id)
                                   : group.note.empty();
        json record{{"key", group.key}, {"label", group.label}, {"available", available}};
        record["availability_label"] = available             ? "Available"
                                       : provider != nullptr ? "Not connected"
                                                             : "Coming soon";
        if (!available && provider != nullptr) {
            const std::string label(provider->label);
            record["note"] = "These tools work once the workspace is connected to " + label + ".";
            record["connect_href"] = connectAddress(provider->id);
            record["connect_label"] = "Connect " + label;
        } else if (!available) {
            record["note"] = group.note;
        }
        const std::string_view source = provider != nullptr ? provider->label : "velto";
        record["tools"] = json::array();
        for (const seed::Tool &tool : group.tools)
            record["tools"].push_back(toolRecord(tool, available, source));
        groups.push_back(std::move(record));
    }
    return groups;
}

json ToolCatalog::usable(const Caller &caller) const
{
    json tools = json::array();
    for (const json &group : groups(caller)) {
        for (const json &tool : group["tools"]) {
            if (tool["available"])
                tools.push_back({{"name", tool["name"]}, {"description", tool["description"]}});
        }
    }
    return tools;
}

JsonAnswer ToolCatalog::list(const Call &call)
{
    const auto guard = m_database.lock();
    return json{{"groups", groups(call.caller)}};
}

} // namespace velto::local
