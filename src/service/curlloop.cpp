// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/curlloop.h"

#include "service/transfer.h"

#include <QPointer>
#include <QSocketNotifier>

#include <utility>

namespace velto::service
{

CurlLoop::CurlLoop()
{
    m_multi = curl().multi_init();
    if (m_multi == nullptr)
        qFatal("The HTTP library could not be started");
    curl().multi_setopt(m_multi, CURLMOPT_SOCKETFUNCTION, &CurlLoop::onSocket);
    curl().multi_setopt(m_multi, CURLMOPT_SOCKETDATA, this);
    curl().multi_setopt(m_multi, CURLMOPT_TIMERFUNCTION, &CurlLoop::onTimer);
    curl().multi_setopt(m_multi, CURLMOPT_TIMERDATA, this);
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] { act(CURL_SOCKET_TIMEOUT, 0); });
}

CurlLoop::~CurlLoop()
{
    std::vector<std::shared_ptr<Transfer>> ended;
    for (Transfer *transfer : std::as_const(m_transfers))
        ended.push_back(transfer->shared_from_this());
    for (const auto &transfer : ended)
        transfer->end(base::TransportError{base::TransportError::Kind::Cancelled, {}});
    curl().multi_cleanup(m_multi);
    for (const auto &transfer : ended)
        transfer->deliver();
}

bool CurlLoop::add(Transfer *transfer, CURL *handle)
{
    if (curl().multi_add_handle(m_multi, handle) != CURLM_OK)
        return false;
    m_transfers.insert(transfer);
    return true;
}

void CurlLoop::remove(Transfer *transfer, CURL *handle)
{
    curl().multi_remove_handle(m_multi, handle);
    m_transfers.remove(transfer);
}

void CurlLoop::noteNews(Transfer *transfer)
{
    m_news.push_back(transfer->shared_from_this());
}

int CurlLoop::onSocket(CURL *, curl_socket_t socket, int what, void *user, void *)
{
    auto *self = static_cast<CurlLoop *>(user);
    if (what == CURL_POLL_REMOVE) {
        self->unwatch(socket);
        return 0;
    }
    Watch &watch = self->m_watches[socket];
    if (watch.read == nullptr) {
        watch.read = self->makeNotifier(socket, false);
        watch.write = self->makeNotifier(socket, true);
    }
    watch.read->setEnabled((what & CURL_POLL_IN) != 0);
    watch.write->setEnabled((what & CURL_POLL_OUT) != 0);
    return 0;
}

int CurlLoop::onTimer(CURLM *, long milliseconds, void *user)
{
    auto *self = static_cast<CurlLoop *>(user);
    if (milliseconds < 0)
        self->m_timer.stop();
    else
        self->m_timer.start(std::chrono::milliseconds(milliseconds));
    return 0;
}

QSocketNotifier *CurlLoop::makeNotifier(curl_socket_t socket, bool forWriting)
{
    const auto type = forWriting ? QSocketNotifier::Write : QSocketNotifier::Read;
    auto *notifier = new QSocketNotifier(socket, type, this);
    notifier->setEnabled(false);
    const int events = forWriting ? CURL_CSELECT_OUT : CURL_CSELECT_IN;
    connect(notifier, &QSocketNotifier::activated, this,
            [this, socket, events] { act(socket, events); });
    return notifier;
}

void CurlLoop::unwatch(curl_socket_t socket)
{
    const Watch watch = m_watches.take(socket);
    for (QSocketNotifier *notifier : {watch.read, watch.write}) {
        if (notifier == nullptr)
            continue;
        notifier->setEnabled(false);
        notifier->deleteLater(); // we may be in its signal
    }
}

void CurlLoop::act(curl_socket_t socket, int events)
{
    int running = 0;
    curl().multi_socket_action(m_multi, socket, events, &running);
    collectEnds();
    deliverNews();
}

void CurlLoop::collectEnds()
{
    int left = 0;
    while (const CURLMsg *message = curl().multi_info_read(m_multi, &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        Transfer *transfer = nullptr;
        curl().easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
        transfer->noteDone(message->data.result);
    }
}

void CurlLoop::deliverNews()
{
    const QPointer<CurlLoop> self(this);
    const auto news = std::exchange(m_news, {});
    for (const auto &transfer : news) {
        transfer->deliver();
        if (!self)
            return;
    }
}

} // namespace velto::service
