// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "runningservice.h"

#include "local/auth/authorizeendpoint.h"
#include "local/auth/secrets.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <thread>

using namespace velto::local;
using namespace velto::local::test;
using nlohmann::json;

namespace
{

json bodyOf(const httplib::Result &answer)
{
    return answer ? json::parse(answer->body, nullptr, false) : json();
}

httplib::Params goodPageQuery()
{
    return {{"response_type", "code"},
            {"client_id", "velto-apple"},
            {"redirect_uri", Visitor::RedirectUri},
            {"code_challenge", sha256Text(Visitor::Verifier)},
            {"code_challenge_method", "S256"},
            {"state", "s1"}};
}

httplib::Params with(httplib::Params query, const std::string &name, const std::string &value)
{
    query.erase(name);
    if (!value.empty())
        query.emplace(name, value);
    return query;
}

httplib::Result page(const Visitor &visitor, const httplib::Params &query)
{
    return visitor.client().Get("/auth/oauth2/authorize", query, httplib::Headers{});
}

bool accepted(const Visitor &visitor, const std::string &accessToken)
{
    const auto answer =
        visitor.client().Get("/v1/me", {{"Authorization", "Bearer " + accessToken}});
    return answer && answer->status == 200;
}

void expectInvalidGrant(const httplib::Result &answer)
{
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 400);
    EXPECT_EQ(bodyOf(answer)["error"], "invalid_grant");
}

} // namespace

TEST(AuthorizePage, OffersContinueAndCancelWithoutScripts)
{
    RunningService running;
    const auto answer = page(running.visitor(), goodPageQuery());
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_NE(answer->body.find("<form method=\"post\""), std::string::npos);
    EXPECT_NE(answer->body.find(">Continue</button>"), std::string::npos);
    EXPECT_NE(answer->body.find(">Cancel</button>"), std::string::npos);
    EXPECT_NE(answer->body.find("prefers-color-scheme: dark"), std::string::npos);
    EXPECT_EQ(answer->body.find("<script"), std::string::npos);
}

TEST(AuthorizePage, CannotBeFramedCachedOrScripted)
{
    RunningService running;
    const auto answer = page(running.visitor(), goodPageQuery());
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->get_header_value("X-Frame-Options"), "DENY");
    EXPECT_EQ(answer->get_header_value("Cache-Control"), "no-store");
    const std::string policy = answer->get_header_value("Content-Security-Policy");
    EXPECT_NE(policy.find("default-src 'none'"), std::string::npos);
    EXPECT_NE(policy.find("frame-ancestors 'none'"), std::string::npos);
    EXPECT_EQ(policy.find("form-action"), std::string::npos);
}

TEST(AuthorizePage, NeverRedirectsForAnUnknownClientOrTarget)
{
    RunningService running;
    const std::vector<httplib::Params> queries{
        with(goodPageQuery(), "client_id", "other"),
        with(goodPageQuery(), "client_id", ""),
        with(goodPageQuery(), "redirect_uri", "http://example.org/callback"),
        with(goodPageQuery(), "redirect_uri", "http://127.0.0.1:80@example.org/callback"),
        with(goodPageQuery(), "redirect_uri", "https://127.0.0.1:5000/callback"),
        with(goodPageQuery(), "redirect_uri", "http://127.0.0.1:5000/other"),
        with(goodPageQuery(), "redirect_uri", ""),
    };
    for (const auto &query : queries) {
        const auto answer = page(running.visitor(), query);
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 400);
        EXPECT_FALSE(answer->has_header("Location"));
        EXPECT_NE(answer->body.find("Sign-in can"), std::string::npos);
    }
    auto twice = goodPageQuery();
    twice.emplace("redirect_uri", "http://127.0.0.1:1/callback");
    const auto answer = page(running.visitor(), twice);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 400);
}

TEST(AuthorizePage, SendsOtherFlawsBackToTheClient)
{
    RunningService running;
    const std::vector<std::pair<httplib::Params, std::string>> cases{
        {with(goodPageQuery(), "response_type", "token"), "error=unsupported_response_type"},
        {with(goodPageQuery(), "code_challenge_method", "plain"), "error=invalid_request"},
        {with(goodPageQuery(), "code_challenge", "short"), "error=invalid_request"},
        {with(goodPageQuery(), "code_challenge", ""), "error=invalid_request"},
    };
    for (const auto &[query, error] : cases) {
        const auto answer = page(running.visitor(), query);
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 303);
        const std::string target = answer->get_header_value("Location");
        EXPECT_TRUE(target.starts_with(std::string(Visitor::RedirectUri) + "?" + error)) << target;
        EXPECT_TRUE(target.ends_with("&state=s1")) << target;
    }
}

TEST(AuthorizePage, LoopbackCallbacksAreTheOnlyTargets)
{
    EXPECT_TRUE(isLoopbackCallback("http://127.0.0.1:1/callback"));
    EXPECT_TRUE(isLoopbackCallback("http://127.0.0.1:65535/callback"));
    for (const char *uri :
         {"http://127.0.0.1/callback", "http://127.0.0.1:/callback", "http://127.0.0.1:0/callback",
          "http://127.0.0.1:65536/callback", "http://127.0.0.1:+80/callback",
          "http://127.0.0.1:8x/callback", "http://localhost:80/callback",
          "http://127.0.0.1:80/callback?x=1", "http://127.0.0.1:80/x/callback", ""})
        EXPECT_FALSE(isLoopbackCallback(uri)) << uri;
}

TEST(Consent, ApprovalRedirectsWithCodeAndState)
{
    RunningService running;
    const std::string form =
        "decision=approve&request_id=" + running.visitor().openConsentPage("a b&c=d");
    // As it is on the wire: the library's client decodes header values.
    const std::string answer =
        rawExchange(running.visitor().port(),
                    "POST /auth/oauth2/authorize HTTP/1.1\r\nHost: localhost:" +
                        std::to_string(running.visitor().port()) +
                        "\r\nContent-Length: " + std::to_string(form.size()) + "\r\n\r\n" + form,
                    "\r\n\r\n");
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 303")) << answer;
    const std::string start = "Location: " + std::string(Visitor::RedirectUri) + "?code=";
    const auto redirect = answer.find(start);
    ASSERT_NE(redirect, std::string::npos) << answer;
    const std::string rest = answer.substr(redirect + start.size());
    EXPECT_EQ(rest.find("&state=a%20b%26c%3Dd\r\n"), 43U) << answer;
}

TEST(Consent, CancelRedirectsWithAccessDenied)
{
    RunningService running;
    const std::string id = running.visitor().openConsentPage();
    const auto answer = running.visitor().postForm("/auth/oauth2/authorize",
                                                   {{"request_id", id}, {"decision", "cancel"}});
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 303);
    EXPECT_EQ(answer->get_header_value("Location"),
              std::string(Visitor::RedirectUri) + "?error=access_denied&state=s1");
}

TEST(Consent, FormCountsOnceAndOnlyWithItsOwnId)
{
    RunningService running;
    const std::string id = running.visitor().openConsentPage();
    const httplib::Params form{{"request_id", id}, {"decision", "approve"}};
    ASSERT_EQ(running.visitor().postForm("/auth/oauth2/authorize", form)->status, 303);
    const auto again = running.visitor().postForm("/auth/oauth2/authorize", form);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->status, 400);
    EXPECT_FALSE(again->has_header("Location"));
    const auto guessed = running.visitor().postForm(
        "/auth/oauth2/authorize", {{"request_id", "guess"}, {"decision", "approve"}});
    EXPECT_EQ(guessed->status, 400);
    EXPECT_EQ(
        running.visitor().postForm("/auth/oauth2/authorize", {{"decision", "approve"}})->status,
        400);
}

TEST(Consent, PageExpires)
{
    RunningService running;
    const std::string id = running.visitor().openConsentPage();
    running.passSeconds(601);
    const auto answer = running.visitor().postForm("/auth/oauth2/authorize",
                                                   {{"request_id", id}, {"decision", "approve"}});
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 400);
}

TEST(TokenRequest, CodeGivesTokensThatWork)
{
    RunningService running;
    const auto answer = running.visitor().exchange(running.visitor().approvedCode());
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_EQ(answer->get_header_value("Cache-Control"), "no-store");
    const json tokens = bodyOf(answer);
    EXPECT_EQ(tokens["token_type"], "Bearer");
    EXPECT_EQ(tokens["expires_in"], 900);
    EXPECT_TRUE(accepted(running.visitor(), tokens["access_token"]));
    EXPECT_FALSE(accepted(running.visitor(), tokens["refresh_token"]));
}

TEST(TokenRequest, WrongVerifierIsRefusedAndSpendsTheCode)
{
    RunningService running;
    const std::string code = running.visitor().approvedCode();
    expectInvalidGrant(running.visitor().exchange(code, std::string(50, 'x')));
    expectInvalidGrant(running.visitor().exchange(code));
}

TEST(TokenRequest, CodeIsBoundToItsRedirectAndClient)
{
    RunningService running;
    expectInvalidGrant(running.visitor().exchange(
        running.visitor().approvedCode(), Visitor::Verifier, "http://127.0.0.1:51998/callback"));
    const auto other = running.visitor().postForm("/auth/oauth2/token",
                                                  {{"grant_type", "authorization_code"},
                                                   {"code", running.visitor().approvedCode()},
                                                   {"code_verifier", Visitor::Verifier},
                                                   {"redirect_uri", Visitor::RedirectUri},
                                                   {"client_id", "other"}});
    EXPECT_EQ(other->status, 400);
    EXPECT_EQ(bodyOf(other)["error"], "invalid_client");
}

TEST(TokenRequest, CodeExpiresAfterAMinute)
{
    RunningService running;
    const std::string late = running.visitor().approvedCode();
    running.passSeconds(60);
    expectInvalidGrant(running.visitor().exchange(late));
    const std::string inTime = running.visitor().approvedCode();
    running.passSeconds(59);
    EXPECT_EQ(running.visitor().exchange(inTime)->status, 200);
}

TEST(TokenRequest, ReusedCodeRevokesWhatItGave)
{
    RunningService running;
    const std::string code = running.visitor().approvedCode();
    const json tokens = bodyOf(running.visitor().exchange(code));
    expectInvalidGrant(running.visitor().exchange(code));
    EXPECT_FALSE(accepted(running.visitor(), tokens["access_token"]));
    expectInvalidGrant(running.visitor().refresh(tokens["refresh_token"]));
}

TEST(TokenRequest, MalformedRequestsAreRefused)
{
    RunningService running;
    const std::vector<std::pair<httplib::Params, std::string>> cases{
        {{{"client_id", "velto-apple"}}, "unsupported_grant_type"},
        {{{"client_id", "velto-apple"}, {"grant_type", "password"}}, "unsupported_grant_type"},
        {{{"client_id", "velto-apple"}, {"grant_type", "refresh_token"}}, "invalid_request"},
        {{{"client_id", "velto-apple"}, {"grant_type", "authorization_code"}}, "invalid_request"},
        {{{"grant_type", "refresh_token"}, {"refresh_token", "x"}}, "invalid_client"},
        {{{"client_id", "velto-apple"}, {"grant_type", "a"}, {"grant_type", "b"}},
         "invalid_request"},
    };
    for (const auto &[form, error] : cases) {
        const auto answer = running.visitor().postForm("/auth/oauth2/token", form);
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 400);
        EXPECT_EQ(bodyOf(answer)["error"], error);
    }
}

TEST(Refresh, RotatesTheToken)
{
    RunningService running;
    const SignedIn first = running.visitor().signIn();
    const json second = bodyOf(running.visitor().refresh(first.refreshToken));
    EXPECT_NE(second["refresh_token"], first.refreshToken);
    EXPECT_TRUE(accepted(running.visitor(), second["access_token"]));
    EXPECT_EQ(running.visitor().refresh(second["refresh_token"])->status, 200);
}

TEST(Refresh, ReuseOfAnOldTokenRevokesTheGrant)
{
    RunningService running;
    const SignedIn first = running.visitor().signIn();
    const json second = bodyOf(running.visitor().refresh(first.refreshToken));
    expectInvalidGrant(running.visitor().refresh(first.refreshToken));
    expectInvalidGrant(running.visitor().refresh(second["refresh_token"]));
    EXPECT_FALSE(accepted(running.visitor(), second["access_token"]));
    EXPECT_FALSE(accepted(running.visitor(), first.accessToken));
}

TEST(Refresh, ReuseLeavesOtherGrantsAlone)
{
    RunningService running;
    const SignedIn other = running.visitor().signIn();
    const SignedIn first = running.visitor().signIn();
    EXPECT_EQ(running.visitor().refresh(first.refreshToken)->status, 200);
    expectInvalidGrant(running.visitor().refresh(first.refreshToken));
    EXPECT_TRUE(accepted(running.visitor(), other.accessToken));
}

TEST(Refresh, OfTwoAtOnceExactlyOneWins)
{
    RunningService running;
    for (int round = 0; round < 10; ++round) {
        const SignedIn first = running.visitor().signIn();
        std::atomic<int> wins = 0;
        std::vector<std::jthread> threads;
        for (int i = 0; i < 8; ++i)
            threads.emplace_back([&] {
                const auto answer = running.visitor().refresh(first.refreshToken);
                wins += answer && answer->status == 200 ? 1 : 0;
            });
        threads.clear();
        EXPECT_EQ(wins, 1);
    }
}

TEST(Refresh, UnknownTokenIsAnInvalidGrant)
{
    RunningService running;
    expectInvalidGrant(running.visitor().refresh("unknown"));
}

TEST(Revoke, EndsTheGrantAndItsAccessTokens)
{
    RunningService running;
    const SignedIn tokens = running.visitor().signIn();
    const auto answer =
        running.visitor().postForm("/auth/oauth2/revoke", {{"token", tokens.refreshToken},
                                                           {"token_type_hint", "refresh_token"},
                                                           {"client_id", "velto-apple"}});
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_FALSE(accepted(running.visitor(), tokens.accessToken));
    expectInvalidGrant(running.visitor().refresh(tokens.refreshToken));
}

TEST(Revoke, SaysNothingOfUnknownTokens)
{
    RunningService running;
    EXPECT_EQ(running.visitor().postForm("/auth/oauth2/revoke", {{"token", "x"}})->status, 200);
    EXPECT_EQ(
        running.visitor().postForm("/auth/oauth2/revoke", httplib::Params{{"a", "b"}})->status,
        200);
}

TEST(AccessToken, ExpiresWithItsLifetime)
{
    RunningService running;
    const SignedIn tokens = running.visitor().signIn();
    running.passSeconds(899);
    EXPECT_TRUE(accepted(running.visitor(), tokens.accessToken));
    running.passSeconds(1);
    EXPECT_FALSE(accepted(running.visitor(), tokens.accessToken));
}

TEST(AccessToken, MissingOrWrongIsA401WithAReason)
{
    RunningService running;
    for (const httplib::Headers &headers :
         {httplib::Headers{}, httplib::Headers{{"Authorization", "Bearer nonsense"}},
          httplib::Headers{{"Authorization", "Basic eDp5"}},
          httplib::Headers{{"Authorization", "Bearer "}}}) {
        const auto answer = running.visitor().client().Get("/v1/me", headers);
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->status, 401);
        EXPECT_TRUE(answer->get_header_value("WWW-Authenticate").starts_with("Bearer "));
        EXPECT_EQ(bodyOf(answer)["error"], "invalid_token");
        EXPECT_TRUE(bodyOf(answer)["message"].is_string());
    }
}

TEST(Secrets, AreNeitherInTheFilesNorInTheLog)
{
    RunningService running;
    const std::string code = running.visitor().approvedCode();
    const json tokens = bodyOf(running.visitor().exchange(code));
    const json more = bodyOf(running.visitor().refresh(tokens["refresh_token"]));
    running.service().stop();
    std::string seen;
    for (const std::string &line : running.log())
        seen += line + "\n";
    EXPECT_NE(seen.find("POST /auth/oauth2/token 200"), std::string::npos);
    EXPECT_EQ(seen.find('?'), std::string::npos);
    for (const auto &entry : std::filesystem::recursive_directory_iterator(running.folder())) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        seen.append(std::istreambuf_iterator<char>(file), {});
    }
    EXPECT_NE(seen.find(sha256Text(more["access_token"].get<std::string>())), std::string::npos);
    const std::vector<std::string> secrets{code, tokens["access_token"], tokens["refresh_token"],
                                           more["access_token"], more["refresh_token"]};
    for (const std::string &secret : secrets)
        EXPECT_EQ(seen.find(secret), std::string::npos);
}
