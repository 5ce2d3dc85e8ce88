// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/account.h"

namespace velto::local::account
{

nlohmann::json me()
{
    using nlohmann::json;
    const auto workspace = [](const char *id, const char *slug, const char *name,
                              const char *role) {
        return json{{"id", id}, {"slug", slug}, {"name", name}, {"role", role}};
    };
    return {{"userId", "usr_robin"},
            {"personId", "per_robin"},
            {"workspaceId", "ws_harbourlight"},
            {"workspaces",
             {workspace("ws_harbourlight", "harbourlight", "Harbourlight Studio", "owner"),
              workspace("ws_tidal", "tidal-research", "Tidal Research", "member")}},
            {"user", {{"name", Name}, {"email", Email}, {"image", nullptr}}},
            {"isAdmin", true},
            {"pendingAgreements", json::array()}};
}

} // namespace velto::local::account
