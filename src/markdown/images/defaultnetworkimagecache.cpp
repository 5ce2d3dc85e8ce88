// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/images/defaultnetworkimagecache.h"

#include <QMutexLocker>

#include <iterator>

namespace velto::markdown
{

DefaultNetworkImageCache::DefaultNetworkImageCache(qsizetype countLimit, qsizetype byteLimit)
    : m_countLimit(countLimit)
    , m_byteLimit(byteLimit)
{}

std::optional<QImage> DefaultNetworkImageCache::image(const QUrl &url)
{
    const QMutexLocker lock(&m_mutex);
    const auto found = m_byURL.constFind(url);
    if (found == m_byURL.cend())
        return std::nullopt;
    m_entries.splice(m_entries.begin(), m_entries, *found);
    return m_entries.front().image;
}

void DefaultNetworkImageCache::setImage(const QImage &image, const QUrl &url)
{
    const QMutexLocker lock(&m_mutex);
    if (const auto found = m_byURL.constFind(url); found != m_byURL.cend())
        drop(*found);
    m_entries.push_front({url, image});
    m_byURL.insert(url, m_entries.begin());
    m_bytes += image.sizeInBytes();
    while (m_byURL.size() > m_countLimit || (m_bytes > m_byteLimit && m_byURL.size() > 1))
        drop(std::prev(m_entries.end()));
}

void DefaultNetworkImageCache::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_entries.clear();
    m_byURL.clear();
    m_bytes = 0;
}

void DefaultNetworkImageCache::drop(Entries::iterator entry)
{
    m_bytes -= entry->image.sizeInBytes();
    m_byURL.remove(entry->url);
    m_entries.erase(entry);
}

} // namespace velto::markdown
