// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/transporterror.h"

#include <curl/curl.h>

namespace velto::service
{
namespace
{

using Kind = base::TransportError::Kind;

Kind kindOf(int code)
{
    switch (code) {
    case CURLE_URL_MALFORMAT:
        return Kind::BadURL;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return Kind::CannotFindHost;
    case CURLE_COULDNT_CONNECT:
        return Kind::CannotConnect;
    case CURLE_OPERATION_TIMEDOUT:
        return Kind::TimedOut;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_SEND_FAIL_REWIND:
    case CURLE_ABORTED_BY_CALLBACK: // our own refusal to send a request a second time
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
        return Kind::ConnectionLost;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_CRL_BADFILE:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
    case CURLE_SSL_CLIENTCERT:
    case CURLE_SSL_SHUTDOWN_FAILED:
    case CURLE_SSL_ENGINE_INITFAILED:
    case CURLE_USE_SSL_FAILED:
        return Kind::SecureConnectionFailed;
    case CURLE_UNSUPPORTED_PROTOCOL: // bytes that are no HTTP answer at all
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return Kind::BadServerResponse;
    default:
        return Kind::Other;
    }
}

} // namespace

base::TransportError transportErrorFrom(int curlCode, const QString &detail)
{
    const Kind kind = kindOf(curlCode);
    const bool needsDetail = kind == Kind::SecureConnectionFailed || kind == Kind::Other;
    return {kind, needsDetail ? detail : QString()};
}

} // namespace velto::service
