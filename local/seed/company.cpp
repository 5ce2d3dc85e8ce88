// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/seed/company.h"

#include "local/seed/places.h"

#include <algorithm>

namespace velto::local::seed
{

const std::vector<User> &users()
{
    static const std::vector<User> users{
        {"usr_robin", "robin.okafor@example.org", "Robin Okafor", 412, true},
        {"usr_mei", "mei.tanaka@example.org", "Mei Tanaka", 405},
        {"usr_jonas", "jonas.lindqvist@example.org", "Jonas Lindqvist", 388, false,
         R"([{"kind": "terms", "version": "2026-09"}])"},
        {"usr_zoe", "zoe.marquez@example.org", "Zoë Márquez", 301},
        {"usr_hanako", "hanako.sato@example.org", "佐藤 花子", 240},
        {"usr_tomasz", "tomasz.wrobel@example.org", "Tomasz Wróbel", 198},
        {"usr_amara", "amara.diallo@example.org", "Amara Diallo", 150},
        {"usr_lev", "lev.abramov@example.org", "", 96},
        {"usr_noor", "noor.haddad@example.org", "نور حداد", 61},
        {"usr_ines", "ines.carvalho@example.org", "Inês Carvalho", 27},
        {"usr_owen", "owen.pryce@example.org", "Owen Pryce", 19},
        {"usr_freja", "freja.holm@example.org", "Freja Holm", 6},
        {"usr_kofi", "kofi.mensah@example.org", "", 2},
    };
    return users;
}

const std::vector<Workspace> &workspaces()
{
    static const std::vector<Workspace> workspaces{
        {Studio, "harbourlight", "Harbourlight Studio", "velto@harbourlight.example.org",
         "claude-opus-4-8", "usr_robin", 410},
        {Tidal, "tidal-research", "Tidal Research", "velto@tidal.example.org", "claude-sonnet-4-6",
         "usr_mei", 233},
        {Kitchen, "lantern-kitchen", "Lantern Kitchen", "", "claude-sonnet-4-5", "usr_zoe", 58},
        {Archive, "quay-archive", "Quay Archive", "velto@quay.example.org", "claude-haiku-4-5",
         "usr_robin", 5},
    };
    return workspaces;
}

const std::vector<Member> &members()
{
    using enum Role;
    static const std::vector<seed::Member> members{
        {Studio, "usr_robin", Owner, 410},  {Studio, "usr_mei", Admin, 404},
        {Studio, "usr_jonas", Member, 387}, {Studio, "usr_zoe", Member, 300},
        {Studio, "usr_hanako", Admin, 239}, {Studio, "usr_tomasz", Member, 197},
        {Studio, "usr_amara", Member, 149}, {Studio, "usr_lev", Member, 95},
        {Studio, "usr_noor", Member, 60},   {Tidal, "usr_mei", Owner, 233},
        {Tidal, "usr_hanako", Owner, 230},  {Tidal, "usr_robin", Member, 221},
        {Tidal, "usr_tomasz", Admin, 190},  {Tidal, "usr_jonas", Admin, 120},
        {Tidal, "usr_ines", Member, 26},    {Kitchen, "usr_zoe", Owner, 58},
        {Kitchen, "usr_robin", Admin, 55},  {Kitchen, "usr_jonas", Member, 50},
        {Kitchen, "usr_owen", Member, 18},  {Kitchen, "usr_freja", Member, 6},
        {Archive, "usr_robin", Owner, 5},
    };
    return members;
}

const std::vector<Invite> &invites()
{
    using enum Role;
    static const std::vector<Invite> invites{
        {"inv_paloma", Studio, "paloma.reyes@example.org", Member, "usr_robin", 3},
        {"inv_dmitri", Studio, "dmitri.volkov@example.org", Admin, "usr_mei", 1},
        {"inv_old", Studio, "someone.late@example.org", Member, "usr_mei", 30},
        {"inv_sana", Tidal, "sana.qureshi@example.org", Member, "usr_mei", 2},
    };
    return invites;
}

std::string_view userWithRole(Role role)
{
    const auto member = std::find_if(members().begin(), members().end(), [role](const auto &one) {
        return one.workspaceId == Studio && one.role == role;
    });
    return member->userId;
}

} // namespace velto::local::seed
