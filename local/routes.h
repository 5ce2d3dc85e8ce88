// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/route.h"

#include <vector>

namespace velto::local
{

class AuditLog;
class AuthorizeEndpoint;
class ChatEndpoint;
class Console;
class ConversationEndpoint;
class Integrations;
class Invites;
class Library;
class Marketplace;
class Members;
class People;
class Settings;
class TokenEndpoint;
class ToolCatalog;
class Workspaces;

/// The objects behind the endpoints; they outlive the table.
struct Endpoints
{
    AuthorizeEndpoint &authorize;
    TokenEndpoint &token;
    People &people;
    Workspaces &workspaces;
    Members &members;
    Invites &invites;
    AuditLog &audit;
    Settings &settings;
    Library &skills;
    Library &subagents;
    ToolCatalog &tools;
    Integrations &integrations;
    Marketplace &marketplace;
    Console &console;
    ConversationEndpoint &history;
    ChatEndpoint &chat;
};

/// Everything that the service answers.
[[nodiscard]] std::vector<Route> makeRoutes(const Endpoints &endpoints);

} // namespace velto::local
