// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"

#include <QCoroTask>

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QUrl>

#include <chrono>
#include <memory>
#include <optional>
#include <stop_token>
#include <utility>

namespace velto::service
{

using HeaderList = QList<std::pair<QByteArray, QByteArray>>;

/// A request as plain data. Nothing is added to its headers but what HTTP itself demands.
struct HTTPRequest
{
    QByteArray method = "GET";
    QUrl url;
    HeaderList headers;
    std::optional<QByteArray> body;
    /// How long nothing may come or go before the request fails with `TimedOut`.
    std::chrono::milliseconds timeout = std::chrono::seconds(60);
};

/// What stands before the body. `status` is that of the last answer of a chain of redirects.
struct HTTPHead
{
    int status = 0;
    HeaderList headers;
    QUrl url; ///< Where the answer came from, after redirects.

    /// The first header of that name, whatever its case.
    [[nodiscard]] std::optional<QByteArray> header(QByteArrayView name) const;
};

struct HTTPResponse
{
    HTTPHead head;
    QByteArray body;
};

class CurlLoop;
class Transfer;

/// Opens the HTTP library ahead of the first request, so that this one needn't wait for it. Any
/// thread.
void loadHTTPLibrary();

/// An answer whose body arrives piece by piece. Dropping it ends the request.
class HTTPStream final
{
public:
    HTTPStream(std::shared_ptr<Transfer> transfer, HTTPHead head);
    HTTPStream(HTTPStream &&) noexcept;
    HTTPStream &operator=(HTTPStream &&) noexcept;
    ~HTTPStream();

    [[nodiscard]] const HTTPHead &head() const { return m_head; }
    /// The bytes that came since the last call, as soon as there are any; empty at the end of the
    /// body. A failure is final. One call at a time.
    [[nodiscard]] QCoro::Task<base::Result<QByteArray>> read();

private:
    std::shared_ptr<Transfer> m_transfer;
    HTTPHead m_head;
};

/// The one place that speaks HTTP, over libcurl's multi interface driven by Qt's event loop.
///
/// Main thread only. A request that is not idempotent goes out at most once, whatever happens to
/// the connection. Redirects are followed (20 at most, never from https to http); "Authorization"
/// is dropped as soon as a hop leaves the original request's host and port and is never put
/// back. A request whose stop token fires fails with `Cancelled`, distinct from `TimedOut`.
/// Proxies come from the environment, certificates from the system; loopback needs no proxy.
class Transport final : public QObject
{
    Q_OBJECT

public:
    explicit Transport(QObject *parent = nullptr);
    /// Ends what is still running; its tasks fail with `Cancelled`.
    ~Transport() override;

    /// The whole answer, of whatever status.
    [[nodiscard]] QCoro::Task<base::Result<HTTPResponse>> send(HTTPRequest request,
                                                               std::stop_token stop = {});
    /// Resumes when the head of the answer has come.
    [[nodiscard]] QCoro::Task<base::Result<HTTPStream>> open(HTTPRequest request,
                                                             std::stop_token stop = {});

private:
    bool m_isClosing = false;
    std::unique_ptr<CurlLoop> m_loop; ///< Made with the first request, to keep the start-up short.
};

} // namespace velto::service
