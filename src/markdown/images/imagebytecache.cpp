// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/images/imagebytecache.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QNetworkCacheMetaData>
#include <QNetworkDiskCache>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace velto::markdown
{
namespace
{

constexpr auto digestHeader = "Content-Digest";

QByteArray digestOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

QByteArray header(const QNetworkCacheMetaData &metaData, const QByteArray &name)
{
    const auto headers = metaData.rawHeaders();
    for (const auto &[key, value] : headers) {
        if (key == name)
            return value;
    }
    return {};
}

/// What an address says that the request for it doesn't, makes no other file of it.
QUrl keyOf(const QUrl &url)
{
    return url.adjusted(QUrl::RemoveUserInfo | QUrl::RemoveFragment);
}

/// Makes the folder for the user's eyes only; false when it can't be used.
bool prepareFolder(const QString &folder)
{
    if (!QDir().mkpath(folder))
        return false;
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QFileInfo(folder).isWritable();
}

} // namespace

QString defaultImageCacheDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/velto/images");
}

ImageByteCache::ImageByteCache(ImageByteCacheSettings settings)
    : m_settings(std::move(settings))
    , m_memory(m_settings.memoryCapacity)
{}

ImageByteCache::~ImageByteCache() = default;

std::optional<QByteArray> ImageByteCache::bytes(const QUrl &url)
{
    const QUrl key = keyOf(url);
    if (const QByteArray *known = m_memory.object(key))
        return *known;
    std::optional<QByteArray> found = bytesOnDisk(key);
    if (found)
        remember(key, *found);
    return found;
}

void ImageByteCache::store(const QUrl &url, const QByteArray &bytes)
{
    const QUrl key = keyOf(url);
    remember(key, bytes);
    QNetworkDiskCache *cache = disk();
    if (cache == nullptr)
        return;
    QNetworkCacheMetaData metaData;
    metaData.setUrl(key);
    metaData.setSaveToDisk(true);
    // The cache leaves out what would fill most of it when it knows the size.
    metaData.setRawHeaders(
        {{"Content-Length", QByteArray::number(bytes.size())}, {digestHeader, digestOf(bytes)}});
    QIODevice *file = cache->prepare(metaData);
    if (file == nullptr)
        return;
    if (file->write(bytes) == bytes.size())
        cache->insert(file);
    else
        cache->remove(key); // gives up what was prepared
}

void ImageByteCache::remove(const QUrl &url)
{
    const QUrl key = keyOf(url);
    m_memory.remove(key);
    if (QNetworkDiskCache *cache = disk())
        cache->remove(key);
}

void ImageByteCache::close()
{
    m_disk.reset();
}

QNetworkDiskCache *ImageByteCache::disk()
{
    if (m_disk)
        return m_disk.get();
    // Looked at afresh each time: a folder may go, and a full disk may get room again.
    if (!m_settings.directory || !prepareFolder(*m_settings.directory))
        return nullptr;
    m_disk = std::make_unique<QNetworkDiskCache>();
    m_disk->setCacheDirectory(*m_settings.directory);
    m_disk->setMaximumCacheSize(m_settings.diskCapacity);
    return m_disk.get();
}

std::optional<QByteArray> ImageByteCache::bytesOnDisk(const QUrl &key)
{
    QNetworkDiskCache *cache = disk();
    if (cache == nullptr)
        return std::nullopt;
    const std::unique_ptr<QIODevice> file(cache->data(key));
    if (!file)
        return std::nullopt;
    QByteArray bytes = file->readAll();
    if (header(cache->metaData(key), digestHeader) == digestOf(bytes))
        return bytes;
    cache->remove(key);
    return std::nullopt;
}

void ImageByteCache::remember(const QUrl &key, const QByteArray &bytes)
{
    m_memory.insert(key, new QByteArray(bytes), std::max<qsizetype>(bytes.size(), 1));
}

} // namespace velto::markdown
