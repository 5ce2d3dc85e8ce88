// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QCache>
#include <QString>
#include <QUrl>

#include <memory>
#include <optional>

class QNetworkDiskCache;

namespace velto::markdown
{

/// Where image files are kept, and how many bytes of them.
struct ImageByteCacheSettings
{
    qint64 memoryCapacity = qint64(10) * 1024 * 1024;
    qint64 diskCapacity = qint64(100) * 1024 * 1024;
    /// Absent: nothing on disk.
    std::optional<QString> directory = {};
};

/// "velto/images" in the user's folder for caches.
[[nodiscard]] QString defaultImageCacheDirectory();

/// Image files as they came, in memory and behind that on disk, whatever their age.
///
/// In memory those used last stay, on disk those stored last. A folder that can't be written, or
/// files that somebody damaged, are as good as an empty cache. Any
/// thread, one call at a time.
class ImageByteCache final
{
public:
    explicit ImageByteCache(ImageByteCacheSettings settings);
    ~ImageByteCache();
    ImageByteCache(const ImageByteCache &) = delete;
    ImageByteCache &operator=(const ImageByteCache &) = delete;

    [[nodiscard]] std::optional<QByteArray> bytes(const QUrl &url);
    void store(const QUrl &url, const QByteArray &bytes);
    void remove(const QUrl &url);
    /// Closes the files; the next call opens them again.
    void close();

private:
    [[nodiscard]] QNetworkDiskCache *disk();
    [[nodiscard]] std::optional<QByteArray> bytesOnDisk(const QUrl &key);
    void remember(const QUrl &key, const QByteArray &bytes);

    const ImageByteCacheSettings m_settings;
    QCache<QUrl, QByteArray> m_memory;
    std::unique_ptr<QNetworkDiskCache> m_disk; ///< Made where it is used.
};

} // namespace velto::markdown
