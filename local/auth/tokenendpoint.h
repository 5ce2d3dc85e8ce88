// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/auth/grants.h"
#include "local/http/body.h"
#include "local/http/route.h"

namespace velto::local
{

/// Gives out tokens for codes and refresh tokens, and takes them back.
class TokenEndpoint final
{
public:
    explicit TokenEndpoint(GrantStore &grants);

    void issue(const Call &call, httplib::Response &response);
    /// Always 200: whoever asks learns nothing about a token.
    void revoke(const Call &call, httplib::Response &response);

private:
    void answer(const Form &form, httplib::Response &response);

    GrantStore &m_grants;
};

} // namespace velto::local
