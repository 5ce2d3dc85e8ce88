// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/seed/library.h"

#include "local/seed/places.h"

namespace velto::local::seed
{

const std::vector<Skill> &skills()
{
    static const std::vector<Skill> skills{
        {Studio, "brand/voice guide", "Brand voice",
         "How we write: short sentences, no exclamation marks, British spelling.", true, 12},
        {Studio, "weekly-report", "Weekly report",
         "Gathers what was finished this week and writes the Friday mail.", true, 40},
        {Studio, "invoice-check", "Invoice check",
         "Compares an invoice with the order and names every difference.", true, 75},
        {Studio, "meeting-notes", "Meeting notes",
         "Turns a transcript into decisions, open questions and tasks.", false, 110},
        {Studio, "alt-text", "Alternative texts",
         "Describes pictures for people who can't see them.", true, 160},
        {Tidal, "citation-style", "Citation style", "Formats references as our journal wants them.",
         true, 33},
        {Tidal, "gauge-cleaning", "Gauge cleaning",
         "Finds gaps and spikes in tide gauge series and explains each of them.", true, 61},
        {Kitchen, "menu-costing", "Menu costing",
         "Works out what a plate costs and what it should.", true, 20},
    };
    return skills;
}

const std::vector<Subagent> &subagents()
{
    static const std::vector<Subagent> subagents{
        {Studio, "researcher", "Researcher",
         "Reads around a question and comes back with sources, not opinions.", true, "workspace",
         "claude-sonnet-4-6", "30", R"(["linear", "notion"])",
         R"(["fetch_page", "search_log", "search_pages"])", 25},
        {Studio, "proofreader", "Proofreader",
         "Reads a text twice: once for sense, once for commas.", true, "workspace",
         "claude-haiku-4-5", "8", "", R"(["read_file"])", 44},
        {Studio, "release-manager", "Release manager",
         "Collects what goes into a release and asks who has to sign it off.", false, "workspace",
         "", "", R"(["github"])", "", 130},
        {Tidal, "data-keeper", "Data keeper", "Looks after data sets: names, units, versions.",
         true, "workspace", "claude-opus-4-8", "40", "",
         R"(["read_gauge", "read_file", "write_file"])", 52},
    };
    return subagents;
}

const std::vector<Connection> &connections()
{
    static const std::vector<Connection> connections{
        {Studio, "google", true,
         R"({"velto_email": "velto@harbourlight.example.org", "expires_at": "@38",
             "expired": false})"},
        {Studio, "slack", true,
         R"({"team_id": "T02HLS", "team_name": "Harbourlight", "installed_at": "@-380",
             "bot_user_id": "U07VELTO"})"},
        {Studio, "linear", true,
         R"({"organization_id": "harbourlight-studio", "expires_at": "@9", "expired": false})"},
        {Studio, "notion", true,
         R"({"workspace_id": "ntn-5d20", "workspace_name": "Harbourlight Wiki",
             "installed_at": "@-301"})"},
        {Studio, "github", true,
         R"({"account_login": "harbourlight", "account_type": "Organization",
             "app_slug": "velto-app", "installed_at": "@-290"})"},
        {Studio, "hubspot", true,
         R"({"hub_domain": "harbourlight.hubspot.example", "expires_at": "@-4", "expired": true})"},
        {Studio, "lark", true, R"({"app_id": "cli_a4f0harbour"})"},
        {Studio, "x", false, R"({"username": "harbourlight"})"},
        {Tidal, "google", true,
         R"({"velto_email": "velto@tidal.example.org", "expires_at": "@12", "expired": false})"},
        {Tidal, "chatwork", true, R"({"account_name": "Tidal Research"})"},
        {Tidal, "github", true,
         R"({"account_login": "tidal-research", "account_type": "Organization",
             "app_slug": "velto-app", "installed_at": "@-170"})"},
        {Kitchen, "line", true, R"({"bot_user_id": "Ulantern0042", "installed_at": "@-31"})"},
        // Slack doesn't always tell the name of the team.
        {Kitchen, "slack", true, R"({"team_id": "T09LNK", "installed_at": "@-14"})"},
    };
    return connections;
}

const std::vector<Usage> &usage()
{
    static const std::vector<Usage> usage{
        {Studio, "chat_ui", "claude-opus-4-8", 412'780, 966'410, 1'804'220, 21'930'500, 3'118,
         1'402},
        {Studio, "slack", "claude-opus-4-8", 88'120, 174'350, 402'700, 3'110'040, 690, 377},
        {Studio, "email", "claude-haiku-4-5", 301'900, 92'440, 51'200, 880'000, 512, 498},
        {Studio, "schedule", "claude-sonnet-4-6", 60'310, 210'660, 99'840, 1'520'000, 240, 0},
        {Studio, "chat_ui", "gpt-5.5", 35'200, 61'930, 120'480, 690'110, 204, 118},
        {Tidal, "chat_ui", "claude-sonnet-4-6", 122'650, 318'270, 540'900, 6'420'330, 921, 433},
        {Tidal, "schedule", "claude-sonnet-4-6", 20'940, 77'310, 31'500, 402'650, 96, 0},
        {Kitchen, "line", "claude-sonnet-4-5", 18'300, 40'120, 52'400, 310'700, 188, 171},
    };
    return usage;
}

} // namespace velto::local::seed
