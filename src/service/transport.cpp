// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/transport.h"

#include "service/curllibrary.h"
#include "service/curlloop.h"
#include "service/redirect.h"
#include "service/transfer.h"

namespace velto::service
{

using base::TransportError;
using Kind = TransportError::Kind;

void loadHTTPLibrary()
{
    (void)CurlLibrary::instance();
}

std::optional<QByteArray> HTTPHead::header(QByteArrayView name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return std::nullopt;
}

HTTPStream::HTTPStream(std::shared_ptr<Transfer> transfer, HTTPHead head)
    : m_transfer(std::move(transfer))
    , m_head(std::move(head))
{}

HTTPStream::HTTPStream(HTTPStream &&) noexcept = default;

HTTPStream &HTTPStream::operator=(HTTPStream &&other) noexcept
{
    std::swap(m_transfer, other.m_transfer);
    std::swap(m_head, other.m_head);
    return *this;
}

HTTPStream::~HTTPStream()
{
    if (m_transfer)
        m_transfer->abandon();
}

QCoro::Task<base::Result<QByteArray>> HTTPStream::read()
{
    return m_transfer->read();
}

Transport::Transport(QObject *parent)
    : QObject(parent)
{}

Transport::~Transport()
{
    m_isClosing = true; // whoever is told of the end may ask for more
    m_loop.reset();
}

QCoro::Task<base::Result<HTTPResponse>> Transport::send(HTTPRequest request, std::stop_token stop)
{
    base::Result<HTTPStream> stream = co_await open(std::move(request), std::move(stop));
    if (!stream)
        co_return tl::unexpected(stream.error());
    HTTPResponse response;
    response.head = stream->head();
    for (;;) {
        const base::Result<QByteArray> bytes = co_await stream->read();
        if (!bytes)
            co_return tl::unexpected(bytes.error());
        if (bytes->isEmpty())
            co_return response;
        response.body += *bytes;
    }
}

QCoro::Task<base::Result<HTTPStream>> Transport::open(HTTPRequest request, std::stop_token stop)
{
    if (m_isClosing || stop.stop_requested())
        co_return base::fail(TransportError{Kind::Cancelled, {}});
    if (!isHTTPAddress(request.url))
        co_return base::fail(TransportError{Kind::BadURL, {}});
    if (!m_loop)
        m_loop = std::make_unique<CurlLoop>();
    const auto transfer = std::make_shared<Transfer>(*m_loop, std::move(request), std::move(stop));
    transfer->start();
    const base::OneShot<base::Result<HTTPHead>> arrival = transfer->head();
    const base::Result<HTTPHead> head = co_await arrival;
    if (!head)
        co_return tl::unexpected(head.error());
    co_return HTTPStream(transfer, *head);
}

} // namespace velto::service
