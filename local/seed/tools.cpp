// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/seed/tools.h"

namespace velto::local::seed
{

const std::vector<ToolGroup> &toolGroups()
{
    static const std::vector<ToolGroup> groups{
        {"research",
         "Research",
         "",
         "",
         {{"search_log", "Searches the log of arrivals and departures."},
          {"read_gauge", "Reads a tide gauge."},
          {"fetch_page", "Reads a public web page."}}},
        {"files",
         "Files",
         "",
         "",
         {{"read_file", "Reads a file of the workspace."},
          {"write_file", "Writes a file into the workspace."},
          {"render_chart", "Draws a chart from a table."},
          {"run_script", "Runs a script in a closed room. An admin has to switch it on.", false}}},
        {"mail",
         "Mail and calendar",
         "google",
         "",
         {{"search_mail", "Searches the mailbox that velto may read."},
          {"draft_mail", "Writes a draft; nothing is sent without you."},
          {"list_events", "Lists what the calendar holds."},
          {"create_event", "Puts an event into the calendar."}}},
        {"slack",
         "Slack",
         "slack",
         "",
         {{"post_message", "Posts a message to a channel."},
          {"read_channel", "Reads what a channel has said lately."}}},
        {"issues",
         "Issues",
         "linear",
         "",
         {{"list_issues", "Lists issues of a team."},
          {"create_issue", "Files an issue."},
          {"comment_issue", "Adds a comment to an issue."}}},
        {"wiki",
         "Wiki",
         "notion",
         "",
         {{"search_pages", "Searches the pages of the wiki."},
          {"append_page", "Adds a section to a page."}}},
        {"code",
         "Code",
         "github",
         "",
         {{"search_code", "Searches the repositories."},
          {"open_pull_request", "Opens a pull request from a branch."},
          {"review_diff", "Comments on a diff, line by line."}}},
        {"customers",
         "Customers",
         "hubspot",
         "",
         {{"find_contact", "Finds a contact or a company."},
          {"log_activity", "Notes a call or a visit."}}},
        {"browser",
         "Browser",
         "",
         "velto will be able to use a browser of its own. We tell you when.",
         {{"open_page", "Opens a page in a browser.", false},
          {"fill_form", "Fills in a form and shows it before sending.", false}}},
    };
    return groups;
}

} // namespace velto::local::seed
