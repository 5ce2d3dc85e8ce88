// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/video/mpvhandle.h"

#include <QImage>
#include <QObject>
#include <QSize>
#include <QThreadPool>

#include <memory>
#include <mutex>

namespace velto::presentation
{

/// Paints the frames of a player into images, on a thread of its own.
class SoftwareFrames final : public QObject
{
    Q_OBJECT

public:
    explicit SoftwareFrames(std::shared_ptr<MpvHandle> handle);
    ~SoftwareFrames() override;

    /// False when the player can't draw.
    [[nodiscard]] bool isValid() const { return m_context != nullptr; }
    /// In pixels of the screen; the picture keeps its proportions and lies in the middle.
    void setSize(QSize size);
    /// The frame that is due; null before the first.
    [[nodiscard]] QImage frame() const;

signals:
    void frameChanged();

private:
    static void frameMayBeDue(void *self);
    void schedule(bool isForced);
    void paint();

    const std::shared_ptr<MpvHandle> m_handle;
    mpv_render_context *m_context = nullptr;
    mutable std::mutex m_mutex; ///< For what follows, but for the thread.
    QSize m_size;
    QImage m_frame;
    bool m_isForced = false; ///< Paint whether the player has something new or not.
    QThreadPool m_thread;
};

} // namespace velto::presentation
