// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/curllibrary.h"

#include <QtGlobal>

#include <dlfcn.h>

namespace velto::service
{

namespace
{

constexpr char libraryName[] = "libcurl.so.4"; // the name says which calls it understands

class Opened final
{
public:
    Opened()
        : m_handle(dlopen(libraryName, RTLD_NOW | RTLD_LOCAL))
    {
        if (m_handle == nullptr)
            qFatal("The HTTP library can't be opened: %s", dlerror());
    }

    template<typename Function>
    void find(const char *name, Function &function) const
    {
        function = reinterpret_cast<Function>(dlsym(m_handle, name));
        if (function == nullptr)
            qFatal("%s has no %s", libraryName, name);
    }

private:
    void *m_handle; // stays open: the library doesn't like to be unloaded
};

} // namespace

CurlLibrary::CurlLibrary()
{
    const Opened library;
    library.find("curl_easy_init", easy_init);
    library.find("curl_easy_cleanup", easy_cleanup);
    library.find("curl_easy_setopt", easy_setopt);
    library.find("curl_easy_getinfo", easy_getinfo);
    library.find("curl_multi_init", multi_init);
    library.find("curl_multi_cleanup", multi_cleanup);
    library.find("curl_multi_setopt", multi_setopt);
    library.find("curl_multi_add_handle", multi_add_handle);
    library.find("curl_multi_remove_handle", multi_remove_handle);
    library.find("curl_multi_socket_action", multi_socket_action);
    library.find("curl_multi_info_read", multi_info_read);
    library.find("curl_slist_append", slist_append);
    library.find("curl_slist_free_all", slist_free_all);

    decltype(&::curl_global_init) global_init = nullptr;
    library.find("curl_global_init", global_init);
    if (global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK)
        qFatal("The HTTP library could not be started");
}

const CurlLibrary &CurlLibrary::instance()
{
    static const CurlLibrary library;
    return library;
}

} // namespace velto::service
