// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/oneshot.h"
#include "service/curlhandle.h"
#include "service/transport.h"

#include <QDeadlineTimer>
#include <QPointer>
#include <QTimer>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace velto::service
{

class CurlLoop;

/// One request on its way, over all the redirects it takes, and the answer as it arrives. Main
/// thread only; the stop token may be fired from any thread. Its coroutines are resumed by
/// `deliver` alone, never while libcurl is at work.
class Transfer final : public std::enable_shared_from_this<Transfer>
{
public:
    Transfer(CurlLoop &loop, HTTPRequest request, std::stop_token stop);
    ~Transfer();
    Transfer(const Transfer &) = delete;
    Transfer &operator=(const Transfer &) = delete;

    void start();
    /// The head of the answer that is no redirect any more.
    [[nodiscard]] base::OneShot<base::Result<HTTPHead>> head() const { return m_finalHead; }
    [[nodiscard]] QCoro::Task<base::Result<QByteArray>> read();
    /// Nobody wants the rest: closes the connection. A waiting read fails with `Cancelled`.
    void abandon();

    // --- for the loop ---
    /// libcurl is done with the present hop.
    void noteDone(CURLcode code);
    /// Acts on what has been noted and resumes whoever waits for it.
    void deliver();
    /// Stops all work for good. The first call counts. Resumes nobody: `deliver` does.
    void end(std::optional<base::TransportError> error);

private:
    static std::size_t onHeader(const char *bytes, std::size_t, std::size_t size, void *user);
    static std::size_t onBody(const char *bytes, std::size_t, std::size_t size, void *user);
    static int onProgress(void *user, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent);
    static int onBeforeRequest(void *user, char *, char *, int, int);

    void beginHop();
    void leaveHop();
    void installCallbacks();
    void noteHeaderLine(QByteArray line);
    void noteNews();
    void noteActivity();
    void checkSilence();
    /// Follows a redirect, or hands the head over. False when a new hop has begun or all is over.
    [[nodiscard]] bool settleHead();
    void takeEnd();
    void watchForStop();

    /// What is known of the present hop.
    struct Hop
    {
        HTTPHead head;
        bool isHeadComplete = false;
        bool isSent = false;
        curl_off_t sentBytes = 0;
        std::optional<CURLcode> result;
        std::array<char, CURL_ERROR_SIZE> errorText{};
    };

    QPointer<CurlLoop> m_loop;
    HTTPRequest m_request;
    const QUrl m_origin;
    std::stop_token m_stop;
    std::optional<std::stop_callback<std::function<void()>>> m_onStop;

    CurlHandle m_handle;
    CurlList m_headerLines;
    Hop m_hop;
    int m_redirects = 0;
    bool m_hasNews = false;

    QPointer<QTimer> m_silenceTimer; ///< The loop's child: we may end in its signal.
    QDeadlineTimer m_silenceEnds;

    base::OneShot<base::Result<HTTPHead>> m_finalHead;
    QByteArray m_unread;
    std::optional<base::OneShot<bool>> m_waitingRead;
    bool m_isOver = false;
    std::optional<base::TransportError> m_error;
};

} // namespace velto::service
