// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/auth/pages.h"

#include "local/auth/secrets.h"

namespace velto::local
{

namespace
{

constexpr std::string_view Style = R"(
:root { color-scheme: light dark; --ground: #f4f5f7; --card: #fff; --text: #1c2025;
  --quiet: #5d6570; --line: #dfe2e7; --accent: #2f6fde; --onaccent: #fff; }
@media (prefers-color-scheme: dark) { :root { --ground: #15171a; --card: #1f2226;
  --text: #eceef1; --quiet: #9aa3af; --line: #343941; --accent: #6ea0ff; --onaccent: #0d1526; } }
* { box-sizing: border-box; }
body { margin: 0; min-height: 100vh; display: grid; place-items: center; padding: 24px;
  background: var(--ground); color: var(--text); font: 16px/1.5 system-ui, sans-serif; }
main { width: 100%; max-width: 420px; padding: 36px; background: var(--card);
  border: 1px solid var(--line); border-radius: 16px; }
.mark { width: 48px; height: 48px; border-radius: 12px; background: var(--accent);
  color: var(--onaccent); display: grid; place-items: center; font-weight: 700;
  font-size: 24px; }
h1 { font-size: 22px; line-height: 1.3; margin: 20px 0 8px; }
p { margin: 0 0 16px; color: var(--quiet); }
.who { display: flex; gap: 12px; align-items: center; padding: 12px 14px; margin: 20px 0;
  border: 1px solid var(--line); border-radius: 10px; color: var(--text); }
.who span { display: block; color: var(--quiet); font-size: 14px; }
.actions { display: flex; gap: 12px; justify-content: flex-end; margin-top: 28px; }
button { font: inherit; font-weight: 600; padding: 10px 22px; border-radius: 10px;
  border: 1px solid var(--line); background: transparent; color: var(--text); cursor: pointer; }
button.main { background: var(--accent); border-color: var(--accent); color: var(--onaccent); }
button:focus-visible { outline: 3px solid var(--accent); outline-offset: 2px; }
small { color: var(--quiet); }
)";

std::string escaped(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&#39;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

void replyPage(httplib::Response &response, int status, std::string_view title,
               const std::string &content)
{
    const std::string nonce = randomSecret();
    response.status = status;
    // No form-action: it would also forbid the redirect that follows the form, to the port on
    // which the client listens.
    response.set_header("Content-Security-Policy", "default-src 'none'; style-src 'nonce-" + nonce +
                                                       "'; base-uri 'none'; "
                                                       "frame-ancestors 'none'");
    response.set_header("X-Frame-Options", "DENY");
    response.set_header("Referrer-Policy", "no-referrer");
    response.set_header("Cache-Control", "no-store");
    const std::string page =
        "<!doctype html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
        "<title>" +
        escaped(title) + "</title><style nonce=\"" + nonce + "\">" + std::string(Style) +
        "</style></head><body><main><div class=\"mark\" aria-hidden=\"true\">v</div>" + content +
        "</main></body></html>\n";
    response.set_content(page, "text/html; charset=utf-8");
}

} // namespace

void replyConsentPage(httplib::Response &response, const std::string &requestId,
                      std::string_view userName, std::string_view email)
{
    const std::string content =
        "<h1>Sign in to velto</h1>"
        "<p>The velto app on this computer wants to use your account on the local service.</p>"
        "<div class=\"who\"><div><strong>" +
        escaped(userName) + "</strong><span>" + escaped(email) +
        "</span></div></div>"
        "<p>It will be able to read and change your conversations and your settings.</p>"
        "<form method=\"post\" action=\"/auth/oauth2/authorize\">"
        "<input type=\"hidden\" name=\"request_id\" value=\"" +
        escaped(requestId) +
        "\"><div class=\"actions\">"
        "<button type=\"submit\" name=\"decision\" value=\"cancel\">Cancel</button>"
        "<button type=\"submit\" name=\"decision\" value=\"approve\" class=\"main\" autofocus>"
        "Continue</button></div></form>";
    replyPage(response, 200, "Sign in to velto", content);
}

void replyErrorPage(httplib::Response &response, int status, std::string_view message)
{
    replyPage(response, status, "Sign-in failed",
              "<h1>Sign-in can’t go on</h1><p>" + escaped(message) +
                  "</p><small>You can close this page and start again from the app.</small>");
}

} // namespace velto::local
