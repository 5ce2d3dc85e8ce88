// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/images/networkimagecache.h"

#include <QHash>
#include <QMutex>

#include <list>

namespace velto::markdown
{

/// Keeps the images that were used last, up to a number of them.
///
/// A number says nothing about memory, and a hostile document may name a hundred large pictures, so
/// the pixels are bounded as well. The newest image stays, however large it is.
class DefaultNetworkImageCache final : public NetworkImageCache
{
public:
    /// Of the cache that the whole program shares.
    static constexpr qsizetype sharedCountLimit = 100;
    /// Some thirty pictures as large as a 1080p screen.
    static constexpr qsizetype defaultByteLimit = qsizetype(256) * 1024 * 1024;

    explicit DefaultNetworkImageCache(qsizetype countLimit = sharedCountLimit,
                                      qsizetype byteLimit = defaultByteLimit);

    [[nodiscard]] std::optional<QImage> image(const QUrl &url) override;
    void setImage(const QImage &image, const QUrl &url) override;
    void clear();

private:
    struct Entry
    {
        QUrl url;
        QImage image;
    };
    using Entries = std::list<Entry>;

    void drop(Entries::iterator entry);

    const qsizetype m_countLimit;
    const qsizetype m_byteLimit;
    QMutex m_mutex;
    Entries m_entries; ///< Used last comes first.
    QHash<QUrl, Entries::iterator> m_byURL;
    qsizetype m_bytes = 0;
};

} // namespace velto::markdown
