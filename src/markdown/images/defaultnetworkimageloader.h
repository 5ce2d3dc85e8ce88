// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/oneshot.h"
#include "markdown/images/imageworker.h"
#include "markdown/images/networkimagecache.h"
#include "markdown/images/networkimageloader.h"

#include <QHash>
#include <QList>

#include <functional>
#include <memory>
#include <optional>

namespace velto::markdown
{

/// What came back for an address.
struct ImageResponse
{
    std::optional<int> status; ///< Absent when the answer wasn't HTTP.
    QByteArray bytes;
    bool mayBeStored = true; ///< False when the sender forbids keeping the bytes.
};

/// Fetches an address. Ends the request when the stop token fires.
using ImageData = std::function<QCoro::Task<base::Result<ImageResponse>>(QUrl, std::stop_token)>;

/// Loads images over HTTP: each address once, however many ask for it at the same time.
///
/// Behind the cache of decoded images stand the files of earlier requests, which serve whatever
/// their age. Only images are kept, never a failure. A request that nobody waits for any more is
/// ended; one whose bytes have come is decoded and kept all the same.
class DefaultNetworkImageLoader final : public NetworkImageLoader
{
    Q_OBJECT

public:
    struct Settings
    {
        ImageByteCacheSettings files = {};
        DecodingLimits decoding = {};
        /// Together with the limit on one download this bounds what all of them hold in memory.
        int requestsAtOnce = 8;
    };

    /// `cache` outlives the loader, and so does whatever `data` uses.
    DefaultNetworkImageLoader(ImageData data, NetworkImageCache &cache, Settings settings,
                              QObject *parent = nullptr);
    ~DefaultNetworkImageLoader() override;

    [[nodiscard]] QCoro::Task<base::Result<QImage>> image(QUrl url,
                                                          std::stop_token stop = {}) override;

private:
    class OngoingTask;
    using Outcome = base::Result<QImage>;
    using TaskPointer = std::shared_ptr<OngoingTask>;

    [[nodiscard]] TaskPointer taskFor(const QUrl &url);
    QCoro::Task<void> run(TaskPointer task);
    [[nodiscard]] QCoro::Task<Outcome> load(TaskPointer task);
    [[nodiscard]] QCoro::Task<base::Result<ImageResponse>> fetch(TaskPointer task);
    /// What is decoded of an answer and kept.
    [[nodiscard]] QCoro::Task<Outcome> take(TaskPointer task, ImageResponse response);
    void giveTurns();
    void leave(const TaskPointer &task, quint64 asker);

    const ImageData m_data;
    NetworkImageCache &m_cache;
    const int m_requestsAtOnce;
    ImageWorker m_worker;
    QHash<QUrl, TaskPointer> m_ongoingTasks;
    QList<TaskPointer> m_queue; ///< Those whose request has not gone out.
    int m_requests = 0;
    bool m_isClosing = false;
};

} // namespace velto::markdown
