// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/video/mpvhandle.h"

#include <QThreadPool>

#include <array>
#include <clocale>
#include <utility>

namespace velto::presentation
{
namespace
{

using Setting = std::pair<const char *, const char *>;

constexpr std::array settings{
    // Nothing of the user's own player, and nothing that runs programs.
    Setting{"config", "no"},
    Setting{"load-scripts", "no"},
    Setting{"load-stats-overlay", "no"},
    Setting{"load-osd-console", "no"},
    Setting{"load-auto-profiles", "no"},
    Setting{"ytdl", "no"},
    Setting{"osc", "no"},
    Setting{"terminal", "no"},
    Setting{"msg-level", "all=no"},
    Setting{"input-default-bindings", "no"},
    Setting{"input-vo-keyboard", "no"},
    Setting{"resume-playback", "no"},
    Setting{"osd-level", "0"},
    // Nothing beside the file itself.
    Setting{"access-references", "no"},
    Setting{"ordered-chapters", "no"},
    Setting{"load-unsafe-playlists", "no"},
    Setting{"sub-auto", "no"},
    Setting{"audio-file-auto", "no"},
    Setting{"cover-art-auto", "no"},
    Setting{"tls-verify", "yes"},
    Setting{"network-timeout", "60"},
    Setting{"demuxer", "lavf"},
    // It waits for the user, and for us to draw.
    Setting{"idle", "yes"},
    Setting{"pause", "yes"},
    Setting{"keep-open", "yes"},
    Setting{"vo", "libmpv"},
    Setting{"hwdec", "no"},
    Setting{"gpu-hwdec-interop", "no"},
    // The desktop hears nothing of a video before it is played.
    Setting{"ao", "null"},
    Setting{"audio-fallback-to-null", "yes"},
    Setting{"audio-client-name", "velto"},
    Setting{"vd-lavc-threads", "2"},
    Setting{"demuxer-max-bytes", "2MiB"},
    Setting{"demuxer-max-back-bytes", "8MiB"},
};

bool allow(const MpvLibrary &mpv, mpv_handle *handle, const char *option,
           std::initializer_list<std::pair<const char *, const char *>> entries)
{
    std::array<char *, 2> keys{};
    std::array<mpv_node, 2> values{};
    mpv_node_list list{};
    for (const auto &[key, value] : entries) {
        const auto at = static_cast<std::size_t>(list.num++);
        keys[at] = const_cast<char *>(key); // the interface has no const; it writes nothing
        values[at].format = MPV_FORMAT_STRING;
        values[at].u.string = const_cast<char *>(value);
    }
    list.keys = keys.data();
    list.values = values.data();
    mpv_node node{};
    node.format = MPV_FORMAT_NODE_MAP;
    node.u.list = &list;
    return mpv.set_option(handle, option, MPV_FORMAT_NODE, &node) >= 0;
}

// The token goes along with every request of the player, so nothing that it reads may name further
// addresses: no playlists, no formats but those of the links that are videos.
bool restrict(const MpvLibrary &mpv, mpv_handle *handle)
{
    constexpr auto protocols = "http,https,httpproxy,tcp,tls";
    constexpr auto formats = "mov,mp4,matroska,webm";
    return allow(mpv, handle, "stream-lavf-o", {{"protocol_whitelist", protocols}}) &&
           allow(mpv, handle, "demuxer-lavf-o",
                 {{"protocol_whitelist", protocols}, {"format_whitelist", formats}});
}

bool configure(const MpvLibrary &mpv, mpv_handle *handle)
{
    for (const auto &[name, value] : settings) {
        if (mpv.set_option_string(handle, name, value) < 0) {
            qWarning("The video player has no setting %s", name);
            return false;
        }
    }
    return restrict(mpv, handle) && mpv.initialize(handle) >= 0;
}

} // namespace

void MpvHandle::prepareProcess()
{
    std::setlocale(LC_NUMERIC, "C");
}

std::shared_ptr<MpvHandle> MpvHandle::create()
{
    const MpvLibrary *mpv = MpvLibrary::load();
    mpv_handle *handle = mpv != nullptr ? mpv->create() : nullptr;
    if (handle == nullptr)
        return {};
    const std::shared_ptr<MpvHandle> made(new MpvHandle(*mpv, handle));
    return configure(*mpv, handle) ? made : nullptr;
}

MpvHandle::MpvHandle(const MpvLibrary &library, mpv_handle *handle)
    : m_library(library)
    , m_handle(handle)
{
    m_library.set_wakeup_callback(m_handle, &MpvHandle::wake, this);
}

MpvHandle::~MpvHandle()
{
    m_library.set_wakeup_callback(m_handle, nullptr, nullptr);
    QThreadPool::globalInstance()->start(
        [end = m_library.terminate_destroy, handle = m_handle] { end(handle); });
}

void MpvHandle::setEventListener(Listener listener)
{
    const std::lock_guard lock(m_mutex);
    m_eventListener = std::move(listener);
}

void MpvHandle::setFrameListener(Listener listener)
{
    const std::lock_guard lock(m_mutex);
    m_frameListener = std::move(listener);
}

void MpvHandle::frameMayBeDue()
{
    const std::lock_guard lock(m_mutex);
    if (m_frameListener)
        m_frameListener();
}

void MpvHandle::wake(void *self)
{
    auto *handle = static_cast<MpvHandle *>(self);
    const std::lock_guard lock(handle->m_mutex);
    if (handle->m_eventListener)
        handle->m_eventListener();
}

} // namespace velto::presentation
