// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <curl/curl.h>

namespace velto::service
{

/// The functions of libcurl that we use, under their names without "curl_".
///
/// The library is opened when the first request needs it instead of being linked: some thirty
/// others come with it, which would take their time before the first frame.
class CurlLibrary final
{
public:
    /// Opens the library at the first call, from any thread. The process ends, with a message that
    /// says why, where it can't be opened.
    [[nodiscard]] static const CurlLibrary &instance();

    decltype(&::curl_easy_init) easy_init = nullptr;
    decltype(&::curl_easy_cleanup) easy_cleanup = nullptr;
    decltype(&::curl_easy_setopt) easy_setopt = nullptr;
    decltype(&::curl_easy_getinfo) easy_getinfo = nullptr;
    decltype(&::curl_multi_init) multi_init = nullptr;
    decltype(&::curl_multi_cleanup) multi_cleanup = nullptr;
    decltype(&::curl_multi_setopt) multi_setopt = nullptr;
    decltype(&::curl_multi_add_handle) multi_add_handle = nullptr;
    decltype(&::curl_multi_remove_handle) multi_remove_handle = nullptr;
    decltype(&::curl_multi_socket_action) multi_socket_action = nullptr;
    decltype(&::curl_multi_info_read) multi_info_read = nullptr;
    decltype(&::curl_slist_append) slist_append = nullptr;
    decltype(&::curl_slist_free_all) slist_free_all = nullptr;

private:
    CurlLibrary();
};

[[nodiscard]] inline const CurlLibrary &curl()
{
    return CurlLibrary::instance();
}

} // namespace velto::service
