// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/oneshot.h"
#include "markdown/images/imagebytecache.h"
#include "markdown/images/imagedecoder.h"

#include <QCoroTask>

#include <QHash>
#include <QImage>
#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

namespace velto::markdown
{

/// Decodes images, and keeps their files, on a thread of its own; answers come back on the main
/// thread. One job after another: a document full of large pictures then needs the memory of one.
class ImageWorker final : public QObject
{
    Q_OBJECT

public:
    explicit ImageWorker(ImageByteCacheSettings files, DecodingLimits limits = {});
    /// Stops a decoder that is at work, gives nothing to whoever waits, writes what is left to
    /// write.
    ~ImageWorker() override;

    /// The image whose file is kept here. A file that turns out to be no image is forgotten.
    [[nodiscard]] QCoro::Task<std::optional<QImage>> stored(QUrl url);
    [[nodiscard]] QCoro::Task<std::optional<QImage>> decoded(QByteArray bytes);
    /// Keeps the file behind an image, after what has been asked for before.
    void store(QUrl url, QByteArray bytes);
    /// What the destructor does; nothing is answered afterwards.
    void close();

private:
    using Answer = std::optional<QImage>;

    [[nodiscard]] QCoro::Task<Answer> run(std::function<Answer()> job);
    [[nodiscard]] Answer decode(const QByteArray &bytes) const;
    [[nodiscard]] Answer decodeStored(const QUrl &url);
    void deliver(quint64 number, const Answer &answer);

    const DecodingLimits m_limits;
    ImageByteCache m_files; ///< The thread's own.
    std::atomic_bool m_isClosing = false;
    QHash<quint64, base::OneShot<Answer>> m_waiting;
    quint64 m_lastNumber = 0;
    QThreadPool m_thread;
};

} // namespace velto::markdown
