// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/auth/consent.h"
#include "local/company/people.h"
#include "local/http/route.h"

#include <optional>
#include <string>
#include <string_view>

namespace velto::local
{

/// True for "http://127.0.0.1:<port>/callback", the only place a code may go.
[[nodiscard]] bool isLoopbackCallback(std::string_view uri);

/// The page on which the user consents, and the answer to its form.
class AuthorizeEndpoint final
{
public:
    /// Whoever opens the page signs in as `signer`.
    AuthorizeEndpoint(GrantStore &grants, ConsentRequests &requests, Person signer);

    void showPage(const Call &call, httplib::Response &response);
    void decide(const Call &call, httplib::Response &response);

private:
    GrantStore &m_grants;
    ConsentRequests &m_requests;
    Person m_signer;
};

} // namespace velto::local
