// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/seed/catalog.h"

#include "local/seed/places.h"

namespace velto::local::seed
{

const std::vector<Bundle> &bundles()
{
    static const std::vector<Bundle> bundles{
        {"sales-desk", "2.3.0", "velto", "Sales desk", "From first mail to signed offer",
         "Answers enquiries with what your price list says, keeps the customer record up to date "
         "and "
         "reminds you of offers that nobody has answered. It drafts; you send.",
         "briefcase", "#2f6fde",
         R"(["Which offers are older than two weeks?", "Draft an answer to the mail from Ada"])",
         R"({"agents": [
              {"slug": "offer-writer", "description": "Writes offers from the price list.",
               "model": "claude-sonnet-4-6", "max_turns": 20, "mcp_server_names": ["hubspot"],
               "tools": ["find_contact", "draft_mail"]},
              {"slug": "follow-up", "description": "Finds offers without an answer."}],
             "skills": [
              {"slug": "price-list", "description": "Reads and explains the price list."},
              {"slug": "objections", "description": "Knows what customers ask, and what we say."},
              {"slug": "handover", "description": "Sums up an account for a colleague."}]})",
         R"(["google", "hubspot"])"},
        {"research-kit", "1.8.1", "velto", "Research kit", "Questions in, sources out",
         "Plans a search, reads what it finds, and writes a summary in which every sentence has "
         "its "
         "source. Contradictions are named, not smoothed over.",
         "magnifier", "#7a4fd0",
         R"(["What is known about tidal locks in the north?", "Compare these three papers"])",
         R"({"agents": [
              {"slug": "literature-scout", "description": "Searches and sorts publications.",
               "model": "claude-opus-4-8", "max_turns": 40, "tools": ["fetch_page"]}],
             "skills": [
              {"slug": "source-check", "description": "Judges how far a source can be trusted."},
              {"slug": "summary-table", "description": "Puts findings into one table."}]})",
         R"(["notion"])"},
        {"release-crew", "0.9.4", "community", "Release crew",
         "Ship on Thursday, sleep on Thursday",
         "Reads what was merged, writes release notes for people, checks the list before the "
         "release "
         "and watches the issues after it.",
         "rocket", "#c2512e", R"(["What has changed since 2.1?"])",
         R"({"agents": [
              {"slug": "note-writer", "description": "Writes release notes for people."},
              {"slug": "gatekeeper", "description": "Goes through the list before a release."},
              {"slug": "watcher", "description": "Sorts new issues after a release.",
               "max_turns": 12, "mcp_server_names": ["linear", "github"]}]})",
         R"(["github", "linear"])"},
        {"front-office", "1.1.0", "velto", "Front office", "The phone is answered",
         "Sorts what comes in by mail and chat, answers what is simple and hands on what is not, "
         "with "
         "a summary so that nobody has to ask twice.",
         "bell", "#2d8f6f", "", R"({"skills": [
              {"slug": "opening-hours", "description": "Knows holidays and exceptions."},
              {"slug": "appointments", "description": "Finds a time that suits both sides."}]})",
         R"(["google", "slack", "line"])"},
        {"bookkeeper", "3.0.2", "velto", "Bookkeeper", "Every receipt finds its place",
         "Reads receipts, proposes an account for each and explains why. Month ends become a list "
         "of "
         "questions instead of a weekend.",
         "ledger", "#8a6d1f", R"(["Which receipts are missing for October?"])",
         R"({"agents": [{"slug": "month-end", "description": "Prepares the end of a month.",
               "model": "claude-haiku-4-5", "max_turns": 25, "tools": ["read_file", "write_file"]}],
             "skills": [{"slug": "receipt-reader", "description": "Reads receipts and invoices."}]})",
         ""},
        {"welcome-pack", "1.0.0", "", "Welcome pack", "The first week of a new colleague",
         "A plan for the first five days, with people to meet and things to read. It holds nothing "
         "that has to be installed yet; the next version will.",
         "", "", "", "", ""},
    };
    return bundles;
}

const std::vector<Installation> &installations()
{
    static const std::vector<Installation> installations{
        {Studio, "research-kit", true, 88},
        {Studio, "front-office", false, 35},
        {Tidal, "research-kit", true, 140},
    };
    return installations;
}

} // namespace velto::local::seed
