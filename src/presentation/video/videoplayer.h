// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/video/softwareframes.h"
#include "presentation/video/videoplayback.h"

#include <QQuickFramebufferObject>
#include <QUrl>

#include <memory>

namespace velto::presentation
{

/// Shows the frames of a video in their proportions, with black around them. The player is made,
/// and asks for the video, when the item first shows; when it shows no more it pauses.
class VideoPlayer : public QQuickFramebufferObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY sourceChanged FINAL)
    /// Sent with every request of the player; empty for none.
    Q_PROPERTY(
        QString accessToken READ accessToken WRITE setAccessToken NOTIFY accessTokenChanged FINAL)
    Q_PROPERTY(velto::presentation::VideoPlayback *playback READ playback CONSTANT FINAL)

public:
    explicit VideoPlayer(QQuickItem *parent = nullptr);
    ~VideoPlayer() override;

    [[nodiscard]] QUrl source() const { return m_source; }
    void setSource(const QUrl &source);
    [[nodiscard]] QString accessToken() const { return m_accessToken; }
    void setAccessToken(const QString &token);
    [[nodiscard]] VideoPlayback *playback() { return &m_playback; }

    [[nodiscard]] Renderer *createRenderer() const override;

signals:
    void sourceChanged();
    void accessTokenChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void componentComplete() override;

private:
    void appear();
    void beginDrawing();
    void tell(bool canDraw);
    void drawerBegun(bool canDraw);
    void resizeFrames();
    [[nodiscard]] bool isSoftware() const;

    QUrl m_source;
    QString m_accessToken;
    VideoPlayback m_playback;
    std::unique_ptr<SoftwareFrames> m_software;
    bool m_canDraw = false;
};

} // namespace velto::presentation
