// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/video/videoplayer.h"

#include "presentation/video/openglframes.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRendererInterface>

namespace velto::presentation
{

VideoPlayer::VideoPlayer(QQuickItem *parent)
    : QQuickFramebufferObject(parent)
{
    connect(&m_playback, &VideoPlayback::handleMade, this, &VideoPlayer::beginDrawing);
}

VideoPlayer::~VideoPlayer()
{
    if (m_playback.handle() != nullptr)
        m_playback.handle()->setFrameListener({});
}

void VideoPlayer::setSource(const QUrl &source)
{
    if (m_source == source)
        return;
    m_source = source;
    emit sourceChanged();
    if (m_canDraw)
        m_playback.open(m_source);
    appear();
}

void VideoPlayer::setAccessToken(const QString &token)
{
    if (m_accessToken == token)
        return;
    m_accessToken = token;
    m_playback.setAccessToken(token);
    emit accessTokenChanged();
}

void VideoPlayer::componentComplete()
{
    QQuickFramebufferObject::componentComplete();
    appear();
}

void VideoPlayer::itemChange(ItemChange change, const ItemChangeData &value)
{
    QQuickFramebufferObject::itemChange(change, value);
    if (change == ItemDevicePixelRatioHasChanged)
        resizeFrames();
    if (change != ItemVisibleHasChanged && change != ItemSceneChange)
        return;
    if (isVisible() && window() != nullptr)
        appear();
    else
        m_playback.pause();
}

void VideoPlayer::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickFramebufferObject::geometryChange(newGeometry, oldGeometry);
    resizeFrames();
}

void VideoPlayer::appear()
{
    if (isComponentComplete() && isVisible() && window() != nullptr && !m_source.isEmpty())
        m_playback.makePlayer();
}

bool VideoPlayer::isSoftware() const
{
    return window()->rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
}

// Only the scene knows how it draws, and only once it does; so the rest happens there.
void VideoPlayer::beginDrawing()
{
    m_playback.handle()->setFrameListener(
        [this] { QMetaObject::invokeMethod(this, &QQuickItem::update, Qt::QueuedConnection); });
    update();
}

void VideoPlayer::drawerBegun(bool canDraw)
{
    if (m_canDraw)
        return; // the scene has been made anew, and goes on with the same video
    m_canDraw = canDraw;
    if (canDraw)
        m_playback.open(m_source);
    else
        m_playback.giveUp();
}

void VideoPlayer::resizeFrames()
{
    if (m_software != nullptr && window() != nullptr)
        m_software->setSize((size() * window()->effectiveDevicePixelRatio()).toSize());
}

QQuickFramebufferObject::Renderer *VideoPlayer::createRenderer() const
{
    auto *self = const_cast<VideoPlayer *>(this);
    return new OpenGLFrames(m_playback.handle(), [self](bool canDraw) { self->tell(canDraw); });
}

// What follows changes items, and must not while the scene takes them over.
void VideoPlayer::tell(bool canDraw)
{
    QMetaObject::invokeMethod(
        this, [this, canDraw] { drawerBegun(canDraw); }, Qt::QueuedConnection);
}

QSGNode *VideoPlayer::updatePaintNode(QSGNode *old, UpdatePaintNodeData *data)
{
    if (m_playback.handle() == nullptr)
        return old;
    if (!isSoftware())
        return QQuickFramebufferObject::updatePaintNode(old, data);
    if (m_software == nullptr) {
        m_software = std::make_unique<SoftwareFrames>(m_playback.handle());
        connect(m_software.get(), &SoftwareFrames::frameChanged, this, &QQuickItem::update);
        resizeFrames();
        tell(m_software->isValid());
    }
    const QImage frame = m_software->frame();
    if (frame.isNull())
        return old;
    auto *node = static_cast<QSGImageNode *>(old);
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
    }
    node->setTexture(window()->createTextureFromImage(frame, QQuickWindow::TextureIsOpaque));
    node->setRect(boundingRect());
    return node;
}

} // namespace velto::presentation
