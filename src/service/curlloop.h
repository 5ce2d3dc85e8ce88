// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/curlhandle.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <memory>
#include <vector>

class QSocketNotifier;

namespace velto::service
{

class Transfer;

/// libcurl's multi handle, driven by Qt's event loop. Main thread only.
///
/// libcurl calls back while it works, and none of its functions may be called from there. So the
/// callbacks only take notes; transfers that have news hear of it after libcurl has returned, and
/// from then on anything may happen, the end of this object included.
class CurlLoop final : public QObject
{
    Q_OBJECT

public:
    CurlLoop();
    /// Ends what is still running, with `Cancelled`.
    ~CurlLoop() override;

    /// `transfer` calls `remove` before `handle` goes away.
    [[nodiscard]] bool add(Transfer *transfer, CURL *handle);
    void remove(Transfer *transfer, CURL *handle);
    /// `transfer` wants its `deliver` called as soon as libcurl has returned.
    void noteNews(Transfer *transfer);

private:
    struct Watch
    {
        QSocketNotifier *read = nullptr;
        QSocketNotifier *write = nullptr;
    };

    static int onSocket(CURL *, curl_socket_t socket, int what, void *user, void *);
    static int onTimer(CURLM *, long milliseconds, void *user);
    [[nodiscard]] QSocketNotifier *makeNotifier(curl_socket_t socket, bool forWriting);
    void unwatch(curl_socket_t socket);
    void act(curl_socket_t socket, int events);
    void collectEnds();
    void deliverNews();

    CURLM *m_multi;
    QTimer m_timer;
    QHash<curl_socket_t, Watch> m_watches;
    QSet<Transfer *> m_transfers;
    std::vector<std::shared_ptr<Transfer>> m_news;
};

} // namespace velto::service
