// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/video/mpvhandle.h"

#include <QFutureWatcher>
#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace velto::presentation
{

/// One video and how it is being played. Main thread.
///
/// Nothing plays before `play`. Numbers that the player has not told yet are 0.
class VideoPlayback : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A VideoPlayer has one.")
    Q_PROPERTY(State state READ state NOTIFY stateChanged FINAL)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY isPlayingChanged FINAL)
    /// It would play, but has to wait for the network.
    Q_PROPERTY(bool isBuffering READ isBuffering NOTIFY isBufferingChanged FINAL)
    /// Seconds, to a tenth.
    Q_PROPERTY(qreal position READ position NOTIFY positionChanged FINAL)
    Q_PROPERTY(qreal duration READ duration NOTIFY durationChanged FINAL)
    /// From 0 to 1.
    Q_PROPERTY(qreal volume READ volume WRITE setVolume NOTIFY volumeChanged FINAL)
    Q_PROPERTY(bool isMuted READ isMuted WRITE setMuted NOTIFY isMutedChanged FINAL)

public:
    enum class State {
        Absent,  ///< There is no player yet.
        Loading, ///< The player is asking for the video.
        Ready,   ///< It shows a frame, and plays when it is told to.
        Failed,
    };
    Q_ENUM(State)

    using QObject::QObject;
    ~VideoPlayback() override;

    /// Makes the player, unless there is one; `handleMade` tells when.
    void makePlayer();
    [[nodiscard]] const std::shared_ptr<MpvHandle> &handle() const { return m_handle; }
    /// Begins to load; needs a player that somebody draws. Nothing but http and https is loaded.
    void open(const QUrl &url);
    /// Goes along with every request from now on; empty for none.
    void setAccessToken(const QString &token);
    /// There is nobody to draw, now or later.
    void giveUp();

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool isPlaying() const { return m_isPlaying; }
    [[nodiscard]] bool isBuffering() const { return m_isBuffering; }
    [[nodiscard]] qreal position() const { return m_position; }
    [[nodiscard]] qreal duration() const { return m_duration; }
    [[nodiscard]] qreal volume() const { return m_volume; }
    [[nodiscard]] bool isMuted() const { return m_isMuted; }

    /// From the beginning, when the end has been reached.
    Q_INVOKABLE void play();
    Q_INVOKABLE void pause();
    Q_INVOKABLE void togglePlaying();
    /// Seconds, kept within the video.
    Q_INVOKABLE void seek(qreal position);
    void setVolume(qreal volume);
    void setMuted(bool muted);

signals:
    void handleMade();
    void stateChanged();
    void isPlayingChanged();
    void isBufferingChanged();
    void positionChanged();
    void durationChanged();
    void volumeChanged();
    void isMutedChanged();

private:
    void takePlayer();
    void takeEvents();
    void takeProperty(const mpv_event_property &property, quint64 which);
    void sendToken();
    void setState(State state);

    bool m_isAskedFor = false;
    QFutureWatcher<std::shared_ptr<MpvHandle>> m_making;
    std::shared_ptr<MpvHandle> m_handle;
    bool m_hasGivenUp = false;
    QString m_accessToken;
    State m_state = State::Absent;
    bool m_isPlaying = false;
    bool m_isBuffering = false;
    bool m_isAtEnd = false;
    bool m_isWanted = false; ///< It has been told to play once.
    qreal m_position = 0;
    qreal m_duration = 0;
    qreal m_volume = 1;
    bool m_isMuted = false;
};

} // namespace velto::presentation
