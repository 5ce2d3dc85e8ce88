// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/transfer.h"

#include "service/curlloop.h"
#include "service/redirect.h"
#include "service/transfersetup.h"
#include "service/transporterror.h"

#include <utility>

namespace velto::service
{

using base::TransportError;
using Kind = TransportError::Kind;

Transfer::Transfer(CurlLoop &loop, HTTPRequest request, std::stop_token stop)
    : m_loop(&loop)
    , m_request(std::move(request))
    , m_origin(m_request.url)
    , m_stop(std::move(stop))
    , m_silenceTimer(new QTimer(&loop))
{
    m_silenceTimer->setSingleShot(true);
    m_silenceTimer->setTimerType(Qt::PreciseTimer);
    QObject::connect(m_silenceTimer, &QTimer::timeout, m_silenceTimer, [this] { checkSilence(); });
}

Transfer::~Transfer()
{
    end(TransportError{Kind::Cancelled, {}});
}

void Transfer::start()
{
    watchForStop();
    beginHop();
    if (m_isOver)
        deliver();
}

QCoro::Task<base::Result<QByteArray>> Transfer::read()
{
    const auto self = shared_from_this();
    if (m_stop.stop_requested() && !m_isOver)
        end(TransportError{Kind::Cancelled, {}});
    while (m_unread.isEmpty() && !m_isOver) {
        m_waitingRead.emplace();
        const base::OneShot<bool> arrival = *m_waitingRead;
        static_cast<void>(co_await arrival);
    }
    if (!m_unread.isEmpty())
        co_return std::exchange(m_unread, {});
    if (m_error)
        co_return base::fail(*m_error);
    co_return QByteArray();
}

void Transfer::abandon()
{
    const auto self = shared_from_this();
    end(TransportError{Kind::Cancelled, {}});
    deliver();
}

void Transfer::noteDone(CURLcode code)
{
    m_hop.result = code;
    noteNews();
}

void Transfer::deliver()
{
    const auto self = shared_from_this();
    m_hasNews = false;
    if (m_stop.stop_requested())
        end(TransportError{Kind::Cancelled, {}});
    if (!m_isOver && m_hop.isHeadComplete && !m_finalHead.isResolved() && !settleHead())
        return;
    if (!m_isOver && m_hop.result)
        takeEnd();
    if (m_isOver && !m_finalHead.isResolved()) {
        m_finalHead.resolve(
            base::fail(m_error.value_or(TransportError{Kind::BadServerResponse, {}})));
        return;
    }
    if (m_waitingRead && (m_isOver || !m_unread.isEmpty()))
        std::exchange(m_waitingRead, std::nullopt)->resolve(true);
}

void Transfer::end(std::optional<TransportError> error)
{
    if (std::exchange(m_isOver, true))
        return;
    m_error = std::move(error);
    if (m_error && m_error->kind == Kind::Cancelled)
        m_unread.clear();
    if (m_silenceTimer) {
        m_silenceTimer->stop();
        m_silenceTimer->deleteLater();
    }
    m_onStop.reset();
    leaveHop();
}

void Transfer::beginHop()
{
    leaveHop();
    m_hop = Hop();
    m_hop.head.url = m_request.url;
    m_unread.clear();
    if (!areSendable(m_request.headers)) {
        end(TransportError{Kind::Other, QStringLiteral("a header holds a line break")});
        return;
    }
    m_handle.reset(curl().easy_init());
    if (m_handle) {
        m_headerLines = configure(m_handle.get(), m_request);
        installCallbacks();
    }
    noteActivity();
    m_silenceTimer->start(m_request.timeout);
    if (!m_handle || !m_loop || !m_loop->add(this, m_handle.get()))
        end(TransportError{Kind::Other, QStringLiteral("out of memory")});
}

void Transfer::leaveHop()
{
    if (m_handle && m_loop)
        m_loop->remove(this, m_handle.get());
    m_handle.reset();
    m_headerLines.reset();
}

void Transfer::installCallbacks()
{
    CURL *handle = m_handle.get();
    curl().easy_setopt(handle, CURLOPT_PRIVATE, this);
    curl().easy_setopt(handle, CURLOPT_ERRORBUFFER, m_hop.errorText.data());
    curl().easy_setopt(handle, CURLOPT_HEADERFUNCTION, &Transfer::onHeader);
    curl().easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl().easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Transfer::onBody);
    curl().easy_setopt(handle, CURLOPT_WRITEDATA, this);
    curl().easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
    curl().easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &Transfer::onProgress);
    curl().easy_setopt(handle, CURLOPT_XFERINFODATA, this);
    curl().easy_setopt(handle, CURLOPT_PREREQFUNCTION, &Transfer::onBeforeRequest);
    curl().easy_setopt(handle, CURLOPT_PREREQDATA, this);
}

std::size_t Transfer::onHeader(const char *bytes, std::size_t, std::size_t size, void *user)
{
    auto *self = static_cast<Transfer *>(user);
    self->noteActivity();
    self->noteHeaderLine(QByteArray(bytes, qsizetype(size)).trimmed());
    return size;
}

std::size_t Transfer::onBody(const char *bytes, std::size_t, std::size_t size, void *user)
{
    auto *self = static_cast<Transfer *>(user);
    self->noteActivity();
    self->m_unread.append(bytes, qsizetype(size));
    self->noteNews();
    return size;
}

int Transfer::onProgress(void *user, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent)
{
    auto *self = static_cast<Transfer *>(user);
    if (std::exchange(self->m_hop.sentBytes, sent) != sent)
        self->noteActivity();
    return 0;
}

// libcurl sends a request again by itself when a kept connection turns out to be dead before the
// first byte of an answer. The service may have carried out the first one all the same.
int Transfer::onBeforeRequest(void *user, char *, char *, int, int)
{
    auto *self = static_cast<Transfer *>(user);
    const bool isRepeated = std::exchange(self->m_hop.isSent, true);
    return isRepeated && !isIdempotent(self->m_request.method) ? CURL_PREREQFUNC_ABORT
                                                               : CURL_PREREQFUNC_OK;
}

void Transfer::noteHeaderLine(QByteArray line)
{
    HTTPHead &head = m_hop.head;
    if (m_hop.isHeadComplete)
        return; // a trailer, behind the body
    if (line.isEmpty()) {
        m_hop.isHeadComplete = head.status >= 200;
        if (m_hop.isHeadComplete)
            noteNews();
    } else if (line.startsWith("HTTP/")) {
        head.headers.clear();
        head.status = line.simplified().split(' ').value(1).toInt();
    } else if (const qsizetype colon = line.indexOf(':'); colon > 0) {
        head.headers.append({line.left(colon), line.mid(colon + 1).trimmed()});
    }
}

void Transfer::noteNews()
{
    if (!std::exchange(m_hasNews, true) && m_loop)
        m_loop->noteNews(this);
}

void Transfer::noteActivity()
{
    m_silenceEnds.setRemainingTime(m_request.timeout, Qt::PreciseTimer);
}

// Restarting a timer at every packet would cost more than looking at the clock when it fires.
void Transfer::checkSilence()
{
    const auto self = shared_from_this();
    const std::chrono::nanoseconds left = m_silenceEnds.remainingTimeAsDuration();
    if (left > std::chrono::nanoseconds::zero()) {
        m_silenceTimer->start(std::chrono::ceil<std::chrono::milliseconds>(left));
        return;
    }
    end(TransportError{Kind::TimedOut, {}});
    deliver();
}

bool Transfer::settleHead()
{
    auto next = nextHop(m_request, m_origin, m_hop.head);
    if (!next) {
        end(std::get<TransportError>(next.error()));
        return true;
    }
    if (!*next) {
        m_finalHead.resolve(m_hop.head);
        return true;
    }
    if (++m_redirects > maximumRedirects) {
        end(TransportError{Kind::TooManyRedirects, {}});
        return true;
    }
    m_request = std::move(**next);
    beginHop();
    return m_isOver;
}

void Transfer::takeEnd()
{
    const CURLcode code = *m_hop.result;
    if (code != CURLE_OK)
        end(transportErrorFrom(code, QString::fromUtf8(m_hop.errorText.data())));
    else
        end(std::nullopt);
}

void Transfer::watchForStop()
{
    // Whoever fires the token may be anywhere, so the work is left to the event loop.
    const std::weak_ptr<Transfer> weak = weak_from_this();
    const auto post = [weak, loop = m_loop.data()] {
        QMetaObject::invokeMethod(
            loop,
            [weak] {
                if (const auto self = weak.lock())
                    self->abandon();
            },
            Qt::QueuedConnection);
    };
    m_onStop.emplace(m_stop, post);
}

} // namespace velto::service
