// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/settingsrecords.h"

namespace velto::agent
{

using base::json::field;
using base::json::Fields;

Fields AgentConfigTool::jsonFields()
{
    static constexpr std::array fields{
        field<&AgentConfigTool::name>("name"),
        field<&AgentConfigTool::description>("description"),
    };
    return fields;
}

Fields AgentConfig::jsonFields()
{
    static constexpr std::array fields{
        field<&AgentConfig::model>("model"),
        field<&AgentConfig::maxTokens>("maxTokens"),
        field<&AgentConfig::maxToolRounds>("maxToolRounds"),
        field<&AgentConfig::tools>("tools"),
        field<&AgentConfig::toolCount>("toolCount"),
    };
    return fields;
}

Fields AppSettings::jsonFields()
{
    static constexpr std::array fields{
        field<&AppSettings::model>("model"),
        field<&AppSettings::provider>("provider"),
        field<&AppSettings::codexModel>("codexModel"),
    };
    return fields;
}

Fields LibrarySkill::jsonFields()
{
    static constexpr std::array fields{
        field<&LibrarySkill::id>("id"),
        field<&LibrarySkill::name>("name"),
        field<&LibrarySkill::description>("description"),
        field<&LibrarySkill::enabled>("enabled"),
        field<&LibrarySkill::updatedAt>("updatedAt"),
    };
    return fields;
}

Fields LibrarySubagent::jsonFields()
{
    static constexpr std::array fields{
        field<&LibrarySubagent::id>("id"),
        field<&LibrarySubagent::name>("name"),
        field<&LibrarySubagent::description>("description"),
        field<&LibrarySubagent::enabled>("enabled"),
        field<&LibrarySubagent::source>("source"),
        field<&LibrarySubagent::model>("model"),
        field<&LibrarySubagent::maxTurns>("maxTurns"),
        field<&LibrarySubagent::mcpServerNames>("mcpServerNames"),
        field<&LibrarySubagent::tools>("tools"),
        field<&LibrarySubagent::updatedAt>("updatedAt"),
    };
    return fields;
}

Fields VeltoTool::jsonFields()
{
    static constexpr std::array fields{
        field<&VeltoTool::name>("name"),
        field<&VeltoTool::description>("description"),
        field<&VeltoTool::available>("available"),
        field<&VeltoTool::source>("source"),
    };
    return fields;
}

Fields VeltoToolGroup::jsonFields()
{
    static constexpr std::array fields{
        field<&VeltoToolGroup::key>("key"),
        field<&VeltoToolGroup::label>("label"),
        field<&VeltoToolGroup::available>("available"),
        field<&VeltoToolGroup::availabilityLabel>("availabilityLabel"),
        field<&VeltoToolGroup::note>("note"),
        field<&VeltoToolGroup::connectHref>("connectHref"),
        field<&VeltoToolGroup::connectLabel>("connectLabel"),
        field<&VeltoToolGroup::tools>("tools"),
    };
    return fields;
}

Fields VeltoToolCatalog::jsonFields()
{
    static constexpr std::array fields{
        field<&VeltoToolCatalog::groups>("groups"),
    };
    return fields;
}

} // namespace velto::agent
