// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/video/mpvhandle.h"

#include <QQuickFramebufferObject>

#include <functional>
#include <memory>

namespace velto::presentation
{

/// Draws the frames of a player with the OpenGL of the scene, on the scene's thread.
class OpenGLFrames final : public QQuickFramebufferObject::Renderer
{
public:
    /// `begun` is told once whether the player can draw, on the scene's thread while the main one
    /// waits for it.
    OpenGLFrames(std::shared_ptr<MpvHandle> handle, std::function<void(bool)> begun);
    ~OpenGLFrames() override;

    QOpenGLFramebufferObject *createFramebufferObject(const QSize &size) override;
    void synchronize(QQuickFramebufferObject *item) override;
    void render() override;

private:
    void begin();

    const std::shared_ptr<MpvHandle> m_handle;
    std::function<void(bool)> m_begun; ///< Null once told.
    bool m_hasBegun = false;
    mpv_render_context *m_context = nullptr;
};

} // namespace velto::presentation
