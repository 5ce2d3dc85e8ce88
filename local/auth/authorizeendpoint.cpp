// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/auth/authorizeendpoint.h"

#include "local/auth/pages.h"
#include "local/http/body.h"

#include <algorithm>
#include <charconv>

namespace velto::local
{

namespace
{

constexpr std::size_t LongestState = 512;

// Absent when the parameter is missing or given more than once.
std::optional<std::string> parameter(const httplib::Request &request, const char *name)
{
    if (request.get_param_value_count(name) != 1)
        return std::nullopt;
    return request.get_param_value(name);
}

bool isChallenge(const std::string &text)
{
    return text.size() == 43 && std::all_of(text.begin(), text.end(), [](unsigned char c) {
               return std::isalnum(c) != 0 || c == '-' || c == '_';
           });
}

void redirect(httplib::Response &response, const Consent &consent, const std::string &answer)
{
    std::string target = consent.request.redirectUri + "?" + answer;
    if (!consent.state.empty())
        target += "&state=" + percentEncoded(consent.state);
    response.set_header("Cache-Control", "no-store");
    response.set_header("Referrer-Policy", "no-referrer");
    response.set_redirect(target, 303);
}

// What is wrong with a request whose client and redirect are in order; null when nothing is.
const char *flawOf(const httplib::Request &request, const Consent &consent)
{
    if (parameter(request, "response_type") != "code")
        return "error=unsupported_response_type";
    if (parameter(request, "code_challenge_method") != "S256" ||
        !isChallenge(consent.request.challenge))
        return "error=invalid_request&error_description=PKCE%20with%20S256%20is%20required";
    if (consent.state.size() > LongestState)
        return "error=invalid_request&error_description=state%20is%20too%20long";
    return nullptr;
}

} // namespace

bool isLoopbackCallback(std::string_view uri)
{
    constexpr std::string_view Start = "http://127.0.0.1:";
    constexpr std::string_view End = "/callback";
    if (!uri.starts_with(Start) || !uri.ends_with(End) || uri.size() <= Start.size() + End.size())
        return false;
    uri = uri.substr(Start.size(), uri.size() - Start.size() - End.size());
    unsigned port = 0;
    const auto [end, error] = std::from_chars(uri.begin(), uri.end(), port);
    return error == std::errc() && end == uri.end() && port >= 1 && port <= 65535;
}

AuthorizeEndpoint::AuthorizeEndpoint(GrantStore &grants, ConsentRequests &requests, Person signer)
    : m_grants(grants)
    , m_requests(requests)
    , m_signer(std::move(signer))
{}

void AuthorizeEndpoint::showPage(const Call &call, httplib::Response &response)
{
    const httplib::Request &request = call.request;
    const auto redirectUri = parameter(request, "redirect_uri");
    // Until client and target are known to be good, nothing may be sent to the target.
    if (parameter(request, "client_id") != ClientId)
        return replyErrorPage(response, 400, "The app that asks is not known to this service.");
    if (!redirectUri || !isLoopbackCallback(*redirectUri))
        return replyErrorPage(response, 400, "The address to return to is not on this computer.");
    Consent consent{{std::string(ClientId), *redirectUri,
                     parameter(request, "code_challenge").value_or(""),
                     parameter(request, "scope").value_or("").substr(0, 512), m_signer.id},
                    parameter(request, "state").value_or("")};
    if (const char *flaw = flawOf(request, consent)) {
        consent.state.resize(std::min(consent.state.size(), LongestState));
        return redirect(response, consent, flaw);
    }
    const std::string id = m_requests.add(std::move(consent));
    replyConsentPage(response, id, m_signer.name, m_signer.email);
}

void AuthorizeEndpoint::decide(const Call &call, httplib::Response &response)
{
    const auto form = parseForm(call.body);
    const auto id = form ? form->find("request_id") : Form::const_iterator();
    const auto decision = form ? form->find("decision") : Form::const_iterator();
    if (!form || id == form->end() || decision == form->end())
        return replyErrorPage(response, 400, "The form is incomplete.");
    const auto consent = m_requests.take(id->second);
    if (!consent)
        return replyErrorPage(response, 400, "This page has expired or was used already.");
    if (decision->second != "approve")
        return redirect(response, *consent, "error=access_denied");
    const auto code = m_grants.issueCode(consent->request);
    if (!code)
        return redirect(response, *consent, "error=server_error");
    redirect(response, *consent, "code=" + *code);
}

} // namespace velto::local
