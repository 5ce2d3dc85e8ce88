// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/images/defaultnetworkimageloader.h"

#include <QPointer>

#include <map>
#include <utility>

namespace velto::markdown
{

using base::TransportError;
using Kind = TransportError::Kind;

namespace
{

tl::unexpected<base::Failure> cancelled()
{
    return base::fail(TransportError{Kind::Cancelled, {}});
}

bool isWebAddress(const QUrl &url)
{
    const QString scheme = url.scheme();
    return scheme == QLatin1StringView("http") || scheme == QLatin1StringView("https");
}

bool isSuccess(const ImageResponse &response)
{
    return response.status && *response.status >= 200 && *response.status <= 299;
}

} // namespace

/// The load of one address and all who wait for it.
class DefaultNetworkImageLoader::OngoingTask final
{
public:
    explicit OngoingTask(QUrl url)
        : url(std::move(url))
    {}

    /// `onStop` is called, on whatever thread, with the number of an asker who lost interest.
    base::OneShot<Outcome> join(std::stop_token token, std::function<void(quint64)> onStop)
    {
        const quint64 number = ++m_lastAsker;
        Asker &asker = m_askers[number];
        asker.onStop.emplace(std::move(token), [number, onStop] { onStop(number); });
        return asker.outcome;
    }

    /// False when somebody else still waits.
    [[nodiscard]] bool dismiss(quint64 number)
    {
        if (auto asker = m_askers.extract(number))
            asker.mapped().outcome.resolve(cancelled());
        return m_askers.empty();
    }

    void finish(const Outcome &outcome)
    {
        auto askers = std::exchange(m_askers, {});
        for (auto &[number, asker] : askers) {
            asker.onStop.reset();
            asker.outcome.resolve(outcome);
        }
    }

    const QUrl url;
    std::stop_source stop;
    base::OneShot<bool> turn; ///< Resolved when the request may go out, or never will.
    bool hasAnswer = false;

private:
    struct Asker
    {
        base::OneShot<Outcome> outcome;
        std::optional<std::stop_callback<std::function<void()>>> onStop;
    };

    std::map<quint64, Asker> m_askers;
    quint64 m_lastAsker = 0;
};

DefaultNetworkImageLoader::DefaultNetworkImageLoader(ImageData data, NetworkImageCache &cache,
                                                     Settings settings, QObject *parent)
    : NetworkImageLoader(parent)
    , m_data(std::move(data))
    , m_cache(cache)
    , m_requestsAtOnce(settings.requestsAtOnce)
    , m_worker(std::move(settings.files), settings.decoding)
{}

DefaultNetworkImageLoader::~DefaultNetworkImageLoader()
{
    m_isClosing = true;
    const auto tasks = std::exchange(m_ongoingTasks, {});
    for (const TaskPointer &task : tasks)
        task->stop.request_stop();
    const auto queue = std::exchange(m_queue, {});
    for (const TaskPointer &task : queue)
        task->turn.resolve(false);
    m_worker.close();
    for (const TaskPointer &task : tasks)
        task->finish(cancelled());
}

QCoro::Task<base::Result<QImage>> DefaultNetworkImageLoader::image(QUrl url, std::stop_token stop)
{
    if (m_isClosing || stop.stop_requested())
        co_return cancelled();
    if (const std::optional<QImage> known = m_cache.image(url))
        co_return *known;
    if (!isWebAddress(url))
        co_return base::fail(TransportError{Kind::BadServerResponse, {}});
    const TaskPointer task = taskFor(url);
    const std::weak_ptr<OngoingTask> weak = task;
    const std::function<void(quint64)> onStop = [this, weak](quint64 asker) {
        // Whoever fires the token may be anywhere, so the work is left to the event loop.
        const auto leaveTask = [this, weak, asker] {
            if (const TaskPointer joined = weak.lock())
                leave(joined, asker);
        };
        QMetaObject::invokeMethod(this, leaveTask, Qt::QueuedConnection);
    };
    const base::OneShot<Outcome> outcome = task->join(std::move(stop), onStop);
    co_return co_await outcome;
}

DefaultNetworkImageLoader::TaskPointer DefaultNetworkImageLoader::taskFor(const QUrl &url)
{
    if (TaskPointer known = m_ongoingTasks.value(url))
        return known;
    auto task = std::make_shared<OngoingTask>(url);
    m_ongoingTasks.insert(url, task);
    run(task);
    return task;
}

QCoro::Task<void> DefaultNetworkImageLoader::run(TaskPointer task)
{
    const QPointer<DefaultNetworkImageLoader> self(this);
    const Outcome outcome = co_await load(task);
    if (!self || m_isClosing)
        co_return;
    if (m_ongoingTasks.value(task->url) == task)
        m_ongoingTasks.remove(task->url);
    task->finish(outcome);
}

QCoro::Task<base::Result<QImage>> DefaultNetworkImageLoader::load(TaskPointer task)
{
    const QPointer<DefaultNetworkImageLoader> self(this);
    const std::optional<QImage> stored = co_await m_worker.stored(task->url);
    if (!self || m_isClosing)
        co_return cancelled();
    if (stored) {
        m_cache.setImage(*stored, task->url);
        co_return *stored;
    }
    base::Result<ImageResponse> response = co_await fetch(task);
    if (!self || m_isClosing)
        co_return cancelled();
    if (!response)
        co_return tl::unexpected(response.error());
    co_return co_await take(task, std::move(*response));
}

QCoro::Task<base::Result<ImageResponse>> DefaultNetworkImageLoader::fetch(TaskPointer task)
{
    const QPointer<DefaultNetworkImageLoader> self(this);
    if (task->stop.stop_requested())
        co_return cancelled();
    m_queue.append(task);
    giveTurns();
    const bool isTurn = co_await task->turn;
    if (!isTurn)
        co_return cancelled();
    const base::Result<ImageResponse> response = co_await m_data(task->url, task->stop.get_token());
    if (!self || m_isClosing)
        co_return cancelled();
    --m_requests;
    giveTurns();
    co_return response;
}

QCoro::Task<base::Result<QImage>> DefaultNetworkImageLoader::take(TaskPointer task,
                                                                  ImageResponse response)
{
    const QPointer<DefaultNetworkImageLoader> self(this);
    if (!isSuccess(response))
        co_return base::fail(TransportError{Kind::BadServerResponse, {}});
    task->hasAnswer = true;
    const std::optional<QImage> image = co_await m_worker.decoded(response.bytes);
    if (!self || m_isClosing)
        co_return cancelled();
    if (!image)
        co_return base::fail(TransportError{Kind::CannotDecodeContentData, {}});
    m_cache.setImage(*image, task->url);
    if (response.mayBeStored)
        m_worker.store(task->url, response.bytes);
    co_return *image;
}

void DefaultNetworkImageLoader::giveTurns()
{
    while (m_requests < m_requestsAtOnce && !m_queue.isEmpty()) {
        ++m_requests;
        m_queue.takeFirst()->turn.resolve(true);
    }
}

void DefaultNetworkImageLoader::leave(const TaskPointer &task, quint64 asker)
{
    if (!task->dismiss(asker) || task->hasAnswer)
        return;
    // Whoever asks from now on gets a request that is not about to end.
    if (m_ongoingTasks.value(task->url) == task)
        m_ongoingTasks.remove(task->url);
    task->stop.request_stop();
    if (m_queue.removeOne(task))
        task->turn.resolve(false);
}

} // namespace velto::markdown
