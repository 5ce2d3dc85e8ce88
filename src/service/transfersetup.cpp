// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/transfersetup.h"

#include <algorithm>
#include <array>

namespace velto::service
{
namespace
{

constexpr std::array<const char *, 5> idempotentMethods{"GET", "HEAD", "OPTIONS", "PUT", "DELETE"};
constexpr std::array<const char *, 3> methodsWithBody{"POST", "PUT", "PATCH"};

bool contains(const auto &names, const QByteArray &name)
{
    return std::ranges::any_of(names, [&](const char *one) { return name == one; });
}

bool has(const HeaderList &headers, const char *name)
{
    return std::ranges::any_of(headers, [name](const auto &header) {
        return header.first.compare(name, Qt::CaseInsensitive) == 0;
    });
}

void append(CurlList &list, const QByteArray &line)
{
    if (curl_slist *longer = curl().slist_append(list.get(), line.constData())) {
        (void)list.release();
        list.reset(longer);
    }
}

CurlList headerLines(const HeaderList &headers)
{
    CurlList list;
    for (const auto &[name, value] : headers)
        append(list, value.isEmpty() ? name + ';' : name + ": " + value);
    // A name with nothing behind it takes away what the library would add by itself.
    for (const char *name : {"Accept", "Expect", "User-Agent", "Content-Type"}) {
        if (!has(headers, name))
            append(list, name + QByteArray(":"));
    }
    return list;
}

void configureMethod(CURL *handle, const HTTPRequest &request)
{
    const bool sendsBody = request.body || contains(methodsWithBody, request.method);
    if (request.method == "HEAD") {
        curl().easy_setopt(handle, CURLOPT_NOBODY, 1L);
    } else if (sendsBody) {
        const qsizetype size = request.body ? request.body->size() : 0;
        curl().easy_setopt(handle, CURLOPT_POST, 1L);
        curl().easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(size));
        curl().easy_setopt(handle, CURLOPT_POSTFIELDS,
                           request.body ? request.body->constData() : "");
    }
    curl().easy_setopt(handle, CURLOPT_CUSTOMREQUEST, request.method.constData());
}

void configureConnection(CURL *handle, const QUrl &url)
{
    curl().easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl().easy_setopt(handle, CURLOPT_TCP_NODELAY, 1L);
    // Without this, ending a request whose host is still being looked up waits for the look-up.
    curl().easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L);
    curl().easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl().easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 0L);
    curl().easy_setopt(handle, CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_2TLS));
    curl().easy_setopt(handle, CURLOPT_NETRC, long(CURL_NETRC_IGNORED));
    curl().easy_setopt(handle, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    // Many requests at once share a connection where HTTP/2 is offered, which shows in the
    // handshake. Without TLS it would show in the first answer, far too late to wait for.
    if (url.scheme() == QLatin1StringView("https"))
        curl().easy_setopt(handle, CURLOPT_PIPEWAIT, 1L);
    const QString host = url.host();
    const std::array loopback{QLatin1StringView("localhost"), QLatin1StringView("127.0.0.1"),
                              QLatin1StringView("::1")};
    if (std::ranges::find(loopback, host) != loopback.end())
        curl().easy_setopt(handle, CURLOPT_NOPROXY, "*");
}

} // namespace

bool isIdempotent(const QByteArray &method)
{
    return contains(idempotentMethods, method);
}

bool areSendable(const HeaderList &headers)
{
    const auto isPlain = [](const QByteArray &text) {
        return !text.contains('\r') && !text.contains('\n') && !text.contains('\0');
    };
    return std::ranges::all_of(headers, [&](const auto &header) {
        return !header.first.isEmpty() && isPlain(header.first) && isPlain(header.second);
    });
}

CurlList configure(CURL *handle, const HTTPRequest &request)
{
    CurlList headers = headerLines(request.headers);
    // Name and password of an address would become an "Authorization" behind our back.
    const QByteArray url = request.url.toEncoded(QUrl::RemoveFragment | QUrl::RemoveUserInfo);
    curl().easy_setopt(handle, CURLOPT_URL, url.constData());
    curl().easy_setopt(handle, CURLOPT_PATH_AS_IS, 1L);
    curl().easy_setopt(handle, CURLOPT_HTTPHEADER, headers.get());
    configureMethod(handle, request);
    configureConnection(handle, request.url);
    return headers;
}

} // namespace velto::service
