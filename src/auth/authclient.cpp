// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/authclient.h"

#include "auth/pkce.h"
#include "base/log.h"
#include "base/text.h"
#include "service/apibaseurl.h"

#include <QUrlQuery>

namespace velto::auth
{
namespace
{

using base::AuthError;
using base::Result;
using service::Tokens;

constexpr QLatin1StringView clientID{"velto-apple"};
constexpr QLatin1StringView scope{"openid profile email offline_access"};

void log(const QString &line)
{
    base::logLine(QLatin1StringView("AuthClient"), line);
}

tl::unexpected<base::Failure> fail(AuthError::Kind kind, const QString &text = {})
{
    return base::fail(AuthError{kind, text});
}

QByteArray encoded(const QList<std::pair<QString, QString>> &pairs)
{
    QByteArrayList fields;
    for (const auto &[key, value] : pairs)
        fields.append(base::formEncoded(key) + '=' + base::formEncoded(value));
    return fields.join('&');
}

/// The value of the first query item of that name, or absent when none has it.
std::optional<QString> firstItem(const QUrlQuery &query, const QString &name)
{
    if (!query.hasQueryItem(name))
        return std::nullopt;
    return query.queryItemValue(name, QUrl::FullyDecoded);
}

/// The code in the redirect that answers the request with `state`.
Result<QString> authorizationCode(const QUrl &redirected, const QString &state)
{
    const QUrlQuery query(redirected);
    const std::optional<QString> returnedState = firstItem(query, QStringLiteral("state"));
    const std::optional<QString> code = firstItem(query, QStringLiteral("code"));
    if (!returnedState || !code)
        return fail(AuthError::Kind::MissingCode);
    if (*returnedState != state)
        return fail(AuthError::Kind::StateMismatch);
    return *code;
}

QCoro::Task<void> endWaitUnlessOpened(QCoro::Task<bool> opening, QPointer<LoopbackServer> server)
{
    const bool opened = co_await std::move(opening);
    if (!opened && server)
        server->resolve(
            fail(AuthError::Kind::Server, AuthClient::tr("Could not open the default browser.")));
}

/// The text of a rejection by the token endpoint, or absent when `failure` is anything else.
std::optional<QString> rejection(const base::Failure &failure)
{
    const auto *error = std::get_if<AuthError>(&failure);
    if (error && error->kind == AuthError::Kind::Server && error->text.contains(u"invalid_grant"))
        return error->text;
    return std::nullopt;
}

/// Stops the server of a sign-in, however that ends.
class ServerStop final
{
public:
    explicit ServerStop(LoopbackServer *server)
        : m_server(server)
    {}
    ~ServerStop()
    {
        if (!m_server)
            return;
        m_server->stop();
        m_server->deleteLater();
    }
    Q_DISABLE_COPY_MOVE(ServerStop)

private:
    QPointer<LoopbackServer> m_server;
};

} // namespace

AuthClient::AuthClient(service::Transport &transport, TokenStore &store,
                       platform::URLOpener &opener, QUrl baseURL, QObject *parent)
    : QObject(parent)
    , m_transport(transport)
    , m_store(store)
    , m_opener(opener)
    , m_baseURL(std::move(baseURL))
{}

AuthClient::~AuthClient()
{
    if (const auto flight = std::exchange(m_inFlightRefresh, std::nullopt)) {
        auto abandoned = *flight;
        abandoned.resolve(fail(AuthError::Kind::SessionExpired));
    }
}

QCoro::Task<Result<Tokens>> AuthClient::login()
{
    const QPointer<AuthClient> self(this);
    const QString verifier = randomURLSafeString();
    const QString state = randomURLSafeString();
    LoopbackServer *const server = replaceServer();
    const ServerStop stop(server);
    const Result<quint16> port = server->start();
    if (!port)
        co_return tl::unexpected(port.error());

    const QString redirectURI = QStringLiteral("http://127.0.0.1:%1/callback").arg(*port);
    const QUrl page = authorizeURL(redirectURI, codeChallenge(verifier), state);
    const Result<QUrl> redirected = co_await redirect(server, page);
    if (!redirected)
        co_return tl::unexpected(redirected.error());
    const Result<QString> code = authorizationCode(*redirected, state);
    if (!code)
        co_return tl::unexpected(code.error());
    if (!self)
        co_return fail(AuthError::Kind::SessionExpired);

    const Form form{{QStringLiteral("grant_type"), QStringLiteral("authorization_code")},
                    {QStringLiteral("code"), *code},
                    {QStringLiteral("code_verifier"), verifier},
                    {QStringLiteral("redirect_uri"), redirectURI},
                    {QStringLiteral("client_id"), clientID}};
    co_return co_await obtain(
        form, QStringLiteral("login: success — stored refresh %1, access expires_in=%2s"));
}

QCoro::Task<Result<Tokens>> AuthClient::refresh()
{
    if (m_inFlightRefresh) {
        const auto flight = *m_inFlightRefresh;
        log(QStringLiteral("refresh: joining in-flight task"));
        co_return co_await flight;
    }
    const QPointer<AuthClient> self(this);
    base::OneShot<Result<Tokens>> flight;
    m_inFlightRefresh = flight;
    Result<Tokens> tokens = co_await performRefresh();
    // Whoever asks from now on, a joiner that resumes below included, starts anew.
    if (self)
        m_inFlightRefresh.reset();
    flight.resolve(tokens);
    co_return tokens;
}

QCoro::Task<Result<void>> AuthClient::revoke(QString refreshToken)
{
    const Form form{{QStringLiteral("token"), refreshToken},
                    {QStringLiteral("token_type_hint"), QStringLiteral("refresh_token")},
                    {QStringLiteral("client_id"), clientID}};
    const auto response =
        co_await m_transport.send(formPost(QStringLiteral("/auth/oauth2/revoke"), form));
    if (!response)
        co_return tl::unexpected(response.error());
    co_return Result<void>{};
}

LoopbackServer *AuthClient::replaceServer()
{
    if (const QPointer<LoopbackServer> older = m_server)
        older->stop();
    m_server = new LoopbackServer(this);
    return m_server;
}

QUrl AuthClient::authorizeURL(const QString &redirectURI, const QString &challenge,
                              const QString &state) const
{
    QUrl url = service::appended(m_baseURL, QStringLiteral("/auth/oauth2/authorize"));
    url.setQuery(QString::fromLatin1(
        encoded({{QStringLiteral("response_type"), QStringLiteral("code")},
                 {QStringLiteral("client_id"), clientID},
                 {QStringLiteral("redirect_uri"), redirectURI},
                 {QStringLiteral("code_challenge"), challenge},
                 {QStringLiteral("code_challenge_method"), QStringLiteral("S256")},
                 {QStringLiteral("scope"), scope},
                 {QStringLiteral("state"), state}})));
    return url;
}

QCoro::Task<Result<QUrl>> AuthClient::redirect(LoopbackServer *server, QUrl page)
{
    // The wait begins first: a launcher may stay in the foreground until long after the redirect.
    auto callback = server->waitForCallback(m_loginTimeout);
    const auto watch = endWaitUnlessOpened(m_opener.openURL(std::move(page)), server);
    co_return co_await std::move(callback);
}

QCoro::Task<Result<Tokens>> AuthClient::performRefresh()
{
    const QPointer<AuthClient> self(this);
    const std::optional<QString> token = co_await m_store.loadSecret(refreshTokenAccount);
    if (!self)
        co_return fail(AuthError::Kind::SessionExpired);
    if (!token) {
        log(QStringLiteral("refresh: no token in Keychain → sessionExpired"));
        co_return fail(AuthError::Kind::SessionExpired);
    }
    const Result<Tokens> tokens = co_await rotate(*token);
    if (tokens || !self)
        co_return tokens;
    if (std::optional<QString> body = rejection(tokens.error())) {
        // Whole, but for a token that the server may have put into it.
        body->replace(*token, base::tokenTail(*token));
        log(QStringLiteral("refresh: server rejected token — body: %1").arg(*body));
        co_await m_store.deleteSecret(refreshTokenAccount);
        co_return fail(AuthError::Kind::SessionExpired);
    }
    co_return tokens;
}

QCoro::Task<Result<Tokens>> AuthClient::rotate(QString token)
{
    log(QStringLiteral("refresh: presenting token %1").arg(base::tokenTail(token)));
    const Form form{{QStringLiteral("grant_type"), QStringLiteral("refresh_token")},
                    {QStringLiteral("refresh_token"), token},
                    {QStringLiteral("client_id"), clientID}};
    co_return co_await obtain(
        form, QStringLiteral("refresh: success — rotated to %1, access expires_in=%2s"));
}

QCoro::Task<Result<Tokens>> AuthClient::obtain(Form form, QString success)
{
    const QPointer<AuthClient> self(this);
    const Result<Tokens> tokens = co_await tokenRequest(form);
    if (!tokens)
        co_return tokens;
    if (!self)
        co_return fail(AuthError::Kind::SessionExpired);
    const Result<void> saved =
        co_await m_store.saveSecret(tokens->refreshToken, refreshTokenAccount);
    if (!saved)
        co_return tl::unexpected(saved.error());
    log(success.arg(base::tokenTail(tokens->refreshToken), QString::number(tokens->expiresIn)));
    co_return tokens;
}

QCoro::Task<Result<Tokens>> AuthClient::tokenRequest(Form form)
{
    const auto response =
        co_await m_transport.send(formPost(QStringLiteral("/auth/oauth2/token"), form));
    if (!response)
        co_return tl::unexpected(response.error());
    if (response->head.status != 200)
        co_return fail(AuthError::Kind::Server,
                       base::utf8Text(response->body).value_or(QStringLiteral("unknown")));
    co_return base::json::decode<Tokens>(response->body, base::json::Keys::Snake);
}

service::HTTPRequest AuthClient::formPost(const QString &path, const Form &form) const
{
    return {.method = "POST",
            .url = service::appended(m_baseURL, path),
            .headers = {{"Content-Type", "application/x-www-form-urlencoded"}},
            .body = encoded(form)};
}

} // namespace velto::auth
