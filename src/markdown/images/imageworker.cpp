// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/images/imageworker.h"

#include <utility>

namespace velto::markdown
{

ImageWorker::ImageWorker(ImageByteCacheSettings files, DecodingLimits limits)
    : m_limits(limits)
    , m_files(std::move(files))
{
    m_thread.setMaxThreadCount(1);
}

ImageWorker::~ImageWorker()
{
    close();
}

void ImageWorker::close()
{
    if (m_isClosing.exchange(true))
        return;
    m_thread.start([this] { m_files.close(); });
    m_thread.waitForDone();
    const auto waiting = std::exchange(m_waiting, {});
    for (base::OneShot<Answer> answer : waiting)
        answer.resolve(std::nullopt);
}

QCoro::Task<std::optional<QImage>> ImageWorker::stored(QUrl url)
{
    return run([this, url] { return decodeStored(url); });
}

QCoro::Task<std::optional<QImage>> ImageWorker::decoded(QByteArray bytes)
{
    return run([this, bytes] { return decode(bytes); });
}

void ImageWorker::store(QUrl url, QByteArray bytes)
{
    if (!m_isClosing)
        m_thread.start([this, url, bytes] { m_files.store(url, bytes); });
}

QCoro::Task<ImageWorker::Answer> ImageWorker::run(std::function<Answer()> job)
{
    if (m_isClosing)
        co_return std::nullopt;
    const quint64 number = ++m_lastNumber;
    const base::OneShot<Answer> answer;
    m_waiting.insert(number, answer);
    m_thread.start([this, number, job] {
        const Answer found = m_isClosing ? std::nullopt : job();
        QMetaObject::invokeMethod(
            this, [this, number, found] { deliver(number, found); }, Qt::QueuedConnection);
    });
    co_return co_await answer;
}

ImageWorker::Answer ImageWorker::decode(const QByteArray &bytes) const
{
    return decodeImage(bytes, m_limits, [this] { return m_isClosing.load(); });
}

ImageWorker::Answer ImageWorker::decodeStored(const QUrl &url)
{
    const std::optional<QByteArray> bytes = m_files.bytes(url);
    if (!bytes)
        return std::nullopt;
    Answer image = decode(*bytes);
    if (!image && !m_isClosing)
        m_files.remove(url);
    return image;
}

void ImageWorker::deliver(quint64 number, const Answer &answer)
{
    m_waiting.take(number).resolve(answer);
}

} // namespace velto::markdown
