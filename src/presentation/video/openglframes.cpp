// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/video/openglframes.h"

#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QQuickOpenGLUtils>

#include <array>
#include <utility>

namespace velto::presentation
{
namespace
{

void *functionAddress(void * /*context*/, const char *name)
{
    QOpenGLContext *context = QOpenGLContext::currentContext();
    return context != nullptr ? reinterpret_cast<void *>(context->getProcAddress(name)) : nullptr;
}

void frameMayBeDue(void *handle)
{
    static_cast<MpvHandle *>(handle)->frameMayBeDue();
}

} // namespace

OpenGLFrames::OpenGLFrames(std::shared_ptr<MpvHandle> handle, std::function<void(bool)> begun)
    : m_handle(std::move(handle))
    , m_begun(std::move(begun))
{}

OpenGLFrames::~OpenGLFrames()
{
    if (m_context != nullptr)
        m_handle->mpv().render_context_free(m_context);
}

QOpenGLFramebufferObject *OpenGLFrames::createFramebufferObject(const QSize &size)
{
    return new QOpenGLFramebufferObject(size);
}

void OpenGLFrames::begin()
{
    m_hasBegun = true;
    char api[] = MPV_RENDER_API_TYPE_OPENGL;
    mpv_opengl_init_params opengl{&functionAddress, nullptr};
    std::array params{mpv_render_param{MPV_RENDER_PARAM_API_TYPE, api},
                      mpv_render_param{MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &opengl},
                      mpv_render_param{}};
    const MpvLibrary &mpv = m_handle->mpv();
    if (mpv.render_context_create(&m_context, m_handle->get(), params.data()) < 0)
        m_context = nullptr;
    else
        mpv.render_context_set_update_callback(m_context, &frameMayBeDue, m_handle.get());
    m_handle->frameMayBeDue(); // asks for the next synchronisation, which tells of this
}

void OpenGLFrames::synchronize(QQuickFramebufferObject * /*item*/)
{
    if (!m_hasBegun)
        return;
    if (const auto begun = std::exchange(m_begun, {}))
        begun(m_context != nullptr);
}

void OpenGLFrames::render()
{
    if (!m_hasBegun)
        begin();
    if (m_context == nullptr)
        return;
    const QOpenGLFramebufferObject *target = framebufferObject();
    mpv_opengl_fbo fbo{static_cast<int>(target->handle()), target->width(), target->height(), 0};
    int isFlipped = 0;
    int waitsForTime = 0;
    std::array params{mpv_render_param{MPV_RENDER_PARAM_OPENGL_FBO, &fbo},
                      mpv_render_param{MPV_RENDER_PARAM_FLIP_Y, &isFlipped},
                      mpv_render_param{MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &waitsForTime},
                      mpv_render_param{}};
    m_handle->mpv().render_context_render(m_context, params.data());
    QQuickOpenGLUtils::resetOpenGLState();
}

} // namespace velto::presentation
