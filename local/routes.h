// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/route.h"

#include <vector>

namespace velto::local
{

class AuthorizeEndpoint;
class ChatEndpoint;
class ConversationEndpoint;
class TokenEndpoint;

/// The objects behind the endpoints; they outlive the table.
struct Endpoints
{
    AuthorizeEndpoint &authorize;
    TokenEndpoint &token;
    ConversationEndpoint &history;
    ChatEndpoint &chat;
};

/// Everything that the service answers.
[[nodiscard]] std::vector<Route> makeRoutes(const Endpoints &endpoints);

} // namespace velto::local
