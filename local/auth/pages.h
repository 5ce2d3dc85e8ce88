// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <httplib.h>

#include <string>
#include <string_view>

namespace velto::local
{

/// Answers with the page on which the user lets the client in, or doesn't.
void replyConsentPage(httplib::Response &response, const std::string &requestId,
                      std::string_view userName, std::string_view email);

/// Answers with a page that says why there is nothing to consent to.
void replyErrorPage(httplib::Response &response, int status, std::string_view message);

} // namespace velto::local
