// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <mpv/client.h>
#include <mpv/render.h>
#include <mpv/render_gl.h>

namespace velto::presentation
{

/// The functions of libmpv that we use, under their names without "mpv_".
class MpvLibrary final
{
public:
    /// Opens the library at the first call, which takes a moment; any thread. Null where it can't
    /// be opened.
    [[nodiscard]] static const MpvLibrary *load();

    decltype(&::mpv_create) create = nullptr;
    decltype(&::mpv_initialize) initialize = nullptr;
    decltype(&::mpv_terminate_destroy) terminate_destroy = nullptr;
    decltype(&::mpv_set_option) set_option = nullptr;
    decltype(&::mpv_set_option_string) set_option_string = nullptr;
    decltype(&::mpv_set_property_async) set_property_async = nullptr;
    decltype(&::mpv_observe_property) observe_property = nullptr;
    decltype(&::mpv_command_async) command_async = nullptr;
    decltype(&::mpv_wait_event) wait_event = nullptr;
    decltype(&::mpv_set_wakeup_callback) set_wakeup_callback = nullptr;
    decltype(&::mpv_render_context_create) render_context_create = nullptr;
    decltype(&::mpv_render_context_free) render_context_free = nullptr;
    decltype(&::mpv_render_context_render) render_context_render = nullptr;
    decltype(&::mpv_render_context_update) render_context_update = nullptr;
    decltype(&::mpv_render_context_set_update_callback) render_context_set_update_callback =
        nullptr;

private:
    [[nodiscard]] bool open();
};

} // namespace velto::presentation
