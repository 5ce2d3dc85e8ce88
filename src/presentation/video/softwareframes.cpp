// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/video/softwareframes.h"

#include <array>
#include <cstdlib>
#include <utility>

namespace velto::presentation
{
namespace
{

/// An image whose lines begin where the player's fast ways of writing want them.
QImage alignedImage(QSize size)
{
    constexpr std::size_t alignment = 64;
    const auto stride =
        (static_cast<std::size_t>(size.width()) * 4 + alignment - 1) / alignment * alignment;
    void *pixels = std::aligned_alloc(alignment, stride * static_cast<std::size_t>(size.height()));
    if (pixels == nullptr)
        return {};
    return {
        static_cast<uchar *>(pixels), size.width(), size.height(), static_cast<qsizetype>(stride),
        QImage::Format_RGB32,         &std::free,   pixels};
}

const char *pixelFormat()
{
    return Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "bgr0" : "0rgb";
}

} // namespace

SoftwareFrames::SoftwareFrames(std::shared_ptr<MpvHandle> handle)
    : m_handle(std::move(handle))
{
    m_thread.setMaxThreadCount(1);
    char api[] = MPV_RENDER_API_TYPE_SW;
    std::array params{mpv_render_param{MPV_RENDER_PARAM_API_TYPE, api}, mpv_render_param{}};
    const MpvLibrary &mpv = m_handle->mpv();
    if (mpv.render_context_create(&m_context, m_handle->get(), params.data()) < 0)
        m_context = nullptr;
    else
        mpv.render_context_set_update_callback(m_context, &SoftwareFrames::frameMayBeDue, this);
}

SoftwareFrames::~SoftwareFrames()
{
    if (m_context == nullptr)
        return;
    m_handle->mpv().render_context_set_update_callback(m_context, nullptr, nullptr);
    m_thread.waitForDone();
    m_handle->mpv().render_context_free(m_context);
}

void SoftwareFrames::setSize(QSize size)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_size == size)
            return;
        m_size = size;
    }
    if (isValid())
        schedule(true);
}

QImage SoftwareFrames::frame() const
{
    const std::lock_guard lock(m_mutex);
    return m_frame;
}

void SoftwareFrames::frameMayBeDue(void *self)
{
    static_cast<SoftwareFrames *>(self)->schedule(false);
}

void SoftwareFrames::schedule(bool isForced)
{
    {
        const std::lock_guard lock(m_mutex);
        m_isForced = m_isForced || isForced;
    }
    m_thread.start([this] { paint(); });
}

void SoftwareFrames::paint()
{
    const MpvLibrary &mpv = m_handle->mpv();
    const bool isDue = (mpv.render_context_update(m_context) & MPV_RENDER_UPDATE_FRAME) != 0;
    QSize size;
    {
        const std::lock_guard lock(m_mutex);
        const bool isForced = std::exchange(m_isForced, false);
        if ((!isDue && !isForced) || m_size.isEmpty())
            return;
        size = m_size;
    }
    QImage image = alignedImage(size);
    if (image.isNull())
        return;
    std::array<int, 2> extent{size.width(), size.height()};
    auto stride = static_cast<std::size_t>(image.bytesPerLine());
    int waitsForTime = 0;
    std::array params{
        mpv_render_param{MPV_RENDER_PARAM_SW_SIZE, extent.data()},
        mpv_render_param{MPV_RENDER_PARAM_SW_FORMAT, const_cast<char *>(pixelFormat())},
        mpv_render_param{MPV_RENDER_PARAM_SW_STRIDE, &stride},
        mpv_render_param{MPV_RENDER_PARAM_SW_POINTER, image.bits()},
        mpv_render_param{MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &waitsForTime},
        mpv_render_param{}};
    if (mpv.render_context_render(m_context, params.data()) < 0)
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_frame = std::move(image);
    }
    emit frameChanged();
}

} // namespace velto::presentation
