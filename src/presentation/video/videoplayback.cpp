// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/video/videoplayback.h"

#include <QtConcurrent>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace velto::presentation
{
namespace
{

/// What is observed of the player.
enum Observed : quint64 { Pause = 1, TimePos, Duration, EofReached, PausedForCache };

template<typename T>
bool change(T &value, T wanted)
{
    if (value == wanted)
        return false;
    value = wanted;
    return true;
}

void observe(const MpvHandle &player)
{
    const auto watch = [&player](Observed which, const char *name, mpv_format format) {
        player.mpv().observe_property(player.get(), which, name, format);
    };
    watch(Pause, "pause", MPV_FORMAT_FLAG);
    watch(TimePos, "time-pos", MPV_FORMAT_DOUBLE);
    watch(Duration, "duration", MPV_FORMAT_DOUBLE);
    watch(EofReached, "eof-reached", MPV_FORMAT_FLAG);
    watch(PausedForCache, "paused-for-cache", MPV_FORMAT_FLAG);
}

void set(const MpvHandle &player, const char *name, bool value)
{
    int flag = value ? 1 : 0;
    player.mpv().set_property_async(player.get(), 0, name, MPV_FORMAT_FLAG, &flag);
}

void set(const MpvHandle &player, const char *name, double value)
{
    player.mpv().set_property_async(player.get(), 0, name, MPV_FORMAT_DOUBLE, &value);
}

void set(const MpvHandle &player, const char *name, const char *value)
{
    player.mpv().set_property_async(player.get(), 0, name, MPV_FORMAT_STRING, &value);
}

/// What a video is not worth before somebody wants to see it.
void want(const MpvHandle &player)
{
    set(player, "demuxer-max-bytes", "16MiB");
    set(player, "ao", "pulse,alsa"); // not SDL, which several players at once bring down
}

/// A number that the player told, or 0 where it has none.
double number(const mpv_event_property &property)
{
    return property.format == MPV_FORMAT_DOUBLE ? *static_cast<double *>(property.data) : 0;
}

bool flag(const mpv_event_property &property)
{
    return property.format == MPV_FORMAT_FLAG && *static_cast<int *>(property.data) != 0;
}

} // namespace

VideoPlayback::~VideoPlayback()
{
    if (m_handle == nullptr)
        return;
    m_handle->setEventListener({});
    // Whoever draws may keep the player a little longer, and it should not be heard meanwhile.
    std::array<const char *, 2> command{"stop", nullptr};
    m_handle->mpv().command_async(m_handle->get(), 0, command.data());
}

void VideoPlayback::makePlayer()
{
    if (std::exchange(m_isAskedFor, true))
        return;
    MpvHandle::prepareProcess();
    connect(&m_making, &QFutureWatcherBase::finished, this, &VideoPlayback::takePlayer);
    m_making.setFuture(QtConcurrent::run(&MpvHandle::create));
}

void VideoPlayback::takePlayer()
{
    m_handle = m_making.result();
    if (m_handle == nullptr)
        return giveUp();
    observe(*m_handle);
    set(*m_handle, "volume", m_volume * 100);
    set(*m_handle, "mute", m_isMuted);
    sendToken();
    m_handle->setEventListener([this] {
        QMetaObject::invokeMethod(this, &VideoPlayback::takeEvents, Qt::QueuedConnection);
    });
    takeEvents();
    emit handleMade();
}

void VideoPlayback::open(const QUrl &url)
{
    if (m_handle == nullptr || m_hasGivenUp)
        return;
    const QString scheme = url.scheme();
    if (scheme != u"http" && scheme != u"https")
        return setState(State::Failed);
    const QByteArray address = url.toEncoded();
    std::array<const char *, 3> command{"loadfile", address.constData(), nullptr};
    setState(State::Loading);
    m_handle->mpv().command_async(m_handle->get(), 0, command.data());
}

void VideoPlayback::setAccessToken(const QString &token)
{
    if (change(m_accessToken, token) && m_handle != nullptr)
        sendToken();
}

// As a list of one: a comma in a token must not begin another header.
void VideoPlayback::sendToken()
{
    QByteArray header = "Authorization: Bearer " + m_accessToken.toUtf8();
    mpv_node value{};
    value.format = MPV_FORMAT_STRING;
    value.u.string = header.data();
    mpv_node_list list{};
    list.num = m_accessToken.isEmpty() ? 0 : 1;
    list.values = &value;
    mpv_node headers{};
    headers.format = MPV_FORMAT_NODE_ARRAY;
    headers.u.list = &list;
    m_handle->mpv().set_property_async(m_handle->get(), 0, "http-header-fields", MPV_FORMAT_NODE,
                                       &headers);
}

void VideoPlayback::giveUp()
{
    m_hasGivenUp = true;
    setState(State::Failed);
}

void VideoPlayback::play()
{
    if (m_handle == nullptr || m_state != State::Ready)
        return;
    if (!std::exchange(m_isWanted, true))
        want(*m_handle);
    if (m_isAtEnd)
        seek(0);
    set(*m_handle, "pause", false);
}

void VideoPlayback::pause()
{
    if (m_handle != nullptr)
        set(*m_handle, "pause", true);
}

void VideoPlayback::togglePlaying()
{
    if (m_isPlaying)
        pause();
    else
        play();
}

void VideoPlayback::seek(qreal position)
{
    if (m_handle == nullptr || m_state != State::Ready)
        return;
    // The player may not have told the end yet; it knows it all the same.
    const qreal target = std::max(0.0, m_duration > 0 ? std::min(position, m_duration) : position);
    const QByteArray seconds = QByteArray::number(target, 'f', 3);
    std::array<const char *, 4> command{"seek", seconds.constData(), "absolute", nullptr};
    m_handle->mpv().command_async(m_handle->get(), 0, command.data());
}

void VideoPlayback::setVolume(qreal volume)
{
    if (!change(m_volume, std::clamp(volume, 0.0, 1.0)))
        return;
    if (m_handle != nullptr)
        set(*m_handle, "volume", m_volume * 100);
    emit volumeChanged();
}

void VideoPlayback::setMuted(bool muted)
{
    if (!change(m_isMuted, muted))
        return;
    if (m_handle != nullptr)
        set(*m_handle, "mute", m_isMuted);
    emit isMutedChanged();
}

void VideoPlayback::takeEvents()
{
    while (m_handle != nullptr) {
        const mpv_event *event = m_handle->mpv().wait_event(m_handle->get(), 0);
        switch (event->event_id) {
        case MPV_EVENT_NONE:
            return;
        case MPV_EVENT_PLAYBACK_RESTART:
            setState(State::Ready);
            break;
        case MPV_EVENT_END_FILE:
            if (static_cast<mpv_event_end_file *>(event->data)->reason == MPV_END_FILE_REASON_ERROR)
                setState(State::Failed);
            break;
        case MPV_EVENT_PROPERTY_CHANGE:
            takeProperty(*static_cast<mpv_event_property *>(event->data), event->reply_userdata);
            break;
        default:
            break;
        }
    }
}

void VideoPlayback::takeProperty(const mpv_event_property &property, quint64 which)
{
    switch (which) {
    case Pause:
        if (change(m_isPlaying, property.format == MPV_FORMAT_FLAG && !flag(property)))
            emit isPlayingChanged();
        break;
    case TimePos:
        if (change(m_position, std::floor(number(property) * 10) / 10))
            emit positionChanged();
        break;
    case Duration:
        if (change(m_duration, number(property)))
            emit durationChanged();
        break;
    case EofReached:
        m_isAtEnd = flag(property);
        break;
    case PausedForCache:
        if (change(m_isBuffering, flag(property)))
            emit isBufferingChanged();
        break;
    default:
        break;
    }
}

void VideoPlayback::setState(State state)
{
    if (change(m_state, state))
        emit stateChanged();
}

} // namespace velto::presentation
