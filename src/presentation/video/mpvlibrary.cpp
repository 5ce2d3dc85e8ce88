// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/video/mpvlibrary.h"

#include <QtGlobal>

#include <dlfcn.h>

namespace velto::presentation
{
namespace
{

constexpr char libraryName[] = "libmpv.so.2"; // the name says which calls it understands

template<typename Function>
bool find(void *library, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

} // namespace

bool MpvLibrary::open()
{
    void *library = dlopen(libraryName, RTLD_NOW | RTLD_LOCAL); // stays open
    const bool isComplete =
        library != nullptr && find(library, "mpv_create", create) &&
        find(library, "mpv_initialize", initialize) &&
        find(library, "mpv_terminate_destroy", terminate_destroy) &&
        find(library, "mpv_set_option", set_option) &&
        find(library, "mpv_set_option_string", set_option_string) &&
        find(library, "mpv_set_property_async", set_property_async) &&
        find(library, "mpv_observe_property", observe_property) &&
        find(library, "mpv_command_async", command_async) &&
        find(library, "mpv_wait_event", wait_event) &&
        find(library, "mpv_set_wakeup_callback", set_wakeup_callback) &&
        find(library, "mpv_render_context_create", render_context_create) &&
        find(library, "mpv_render_context_free", render_context_free) &&
        find(library, "mpv_render_context_render", render_context_render) &&
        find(library, "mpv_render_context_update", render_context_update) &&
        find(library, "mpv_render_context_set_update_callback", render_context_set_update_callback);
    if (!isComplete)
        qWarning("Videos can't be played: %s", dlerror());
    return isComplete;
}

const MpvLibrary *MpvLibrary::load()
{
    static MpvLibrary library;
    static const bool isOpen = library.open();
    return isOpen ? &library : nullptr;
}

} // namespace velto::presentation
