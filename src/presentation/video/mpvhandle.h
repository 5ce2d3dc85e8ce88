// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/video/mpvlibrary.h"

#include <functional>
#include <memory>
#include <mutex>

namespace velto::presentation
{

/// A player of libmpv, shared by those who command it and those who draw its frames.
class MpvHandle final
{
public:
    /// Called on threads of the player's own, and to do no more than to wake somebody.
    using Listener = std::function<void()>;

    /// The player's formats for numbers are those of C, and it insists on them for the whole
    /// process. Main thread, before `create`.
    static void prepareProcess();
    /// Takes a moment; any thread. Null where there is no player to be had.
    [[nodiscard]] static std::shared_ptr<MpvHandle> create();
    /// Ends the player on a thread of its own: it may have to wait for a server.
    ~MpvHandle();
    MpvHandle(const MpvHandle &) = delete;
    MpvHandle &operator=(const MpvHandle &) = delete;

    [[nodiscard]] mpv_handle *get() const { return m_handle; }
    [[nodiscard]] const MpvLibrary &mpv() const { return m_library; }

    /// Told that there are events. Once this returns, the former listener is called no more.
    void setEventListener(Listener listener);
    /// Told that there may be a frame to draw; likewise.
    void setFrameListener(Listener listener);
    void frameMayBeDue();

private:
    MpvHandle(const MpvLibrary &library, mpv_handle *handle);
    static void wake(void *self);

    const MpvLibrary &m_library;
    mpv_handle *const m_handle;
    std::mutex m_mutex;
    Listener m_eventListener;
    Listener m_frameListener;
};

} // namespace velto::presentation
