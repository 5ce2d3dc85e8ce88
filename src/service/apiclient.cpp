// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/apiclient.h"

#include "base/text.h"
#include "service/apibaseurl.h"

namespace velto::service
{
namespace
{

bool isSuccess(int status)
{
    return status >= 200 && status <= 299;
}

} // namespace

APIClient::APIClient(Transport &transport, TokenRefresher &auth, QUrl baseURL, QObject *parent)
    : QObject(parent)
    , m_transport(transport)
    , m_auth(auth)
    , m_baseURL(std::move(baseURL))
{}

void APIClient::setAccessToken(std::optional<QString> token)
{
    m_accessToken = std::move(token);
}

base::Result<HTTPRequest> APIClient::build(QByteArray method, const QString &path,
                                           std::optional<QByteArray> body,
                                           std::optional<QByteArray> contentType) const
{
    const base::Result<QUrl> url = resolved(m_baseURL, path);
    if (!url)
        return tl::unexpected(url.error());
    HTTPRequest request;
    request.method = std::move(method);
    request.url = *url;
    if (m_accessToken)
        request.headers.append({"Authorization", "Bearer " + m_accessToken->toUtf8()});
    if (body)
        request.headers.append({"Content-Type", contentType.value_or("application/json")});
    request.body = std::move(body);
    return request;
}

QCoro::Task<base::Result<HTTPResponse>> APIClient::request(QByteArray method, QString path,
                                                           std::optional<QByteArray> body,
                                                           std::optional<QByteArray> contentType,
                                                           std::stop_token stop)
{
    const base::Result<HTTPRequest> first = build(method, path, body, contentType);
    if (!first)
        co_return tl::unexpected(first.error());
    base::Result<HTTPResponse> response = co_await m_transport.send(*first, stop);
    if (!response || response->head.status != 401)
        co_return response;

    const base::Result<Tokens> tokens = co_await m_auth.refresh();
    if (!tokens)
        co_return tl::unexpected(tokens.error());
    setAccessToken(tokens->accessToken);
    const base::Result<HTTPRequest> second = build(method, path, body, contentType);
    if (!second)
        co_return tl::unexpected(second.error());
    co_return co_await m_transport.send(*second, stop);
}

QCoro::Task<base::Result<QByteArray>> APIClient::send(QByteArray method, QString path,
                                                      std::optional<QByteArray> body,
                                                      std::optional<QByteArray> contentType,
                                                      std::stop_token stop)
{
    const base::Result<HTTPResponse> response =
        co_await request(std::move(method), std::move(path), std::move(body),
                         std::move(contentType), std::move(stop));
    if (!response)
        co_return tl::unexpected(response.error());
    const int status = response->head.status;
    if (isSuccess(status))
        co_return response->body;
    const QString text = base::utf8Text(response->body).value_or(QStringLiteral("<no body>"));
    co_return base::fail(base::APIError{status, text.trimmed()});
}

QCoro::Task<base::Result<void>> APIClient::sendOnly(QByteArray method, QString path,
                                                    base::Result<std::optional<QByteArray>> body)
{
    if (!body)
        co_return tl::unexpected(body.error());
    const base::Result<QByteArray> data =
        co_await send(std::move(method), std::move(path), std::move(*body));
    if (!data)
        co_return tl::unexpected(data.error());
    co_return base::Result<void>{};
}

} // namespace velto::service
