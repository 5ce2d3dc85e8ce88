// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/curllibrary.h"

#include <memory>

namespace velto::service
{

struct FreeCurlList
{
    void operator()(curl_slist *list) const { curl().slist_free_all(list); }
};
using CurlList = std::unique_ptr<curl_slist, FreeCurlList>;

struct FreeCurlHandle
{
    void operator()(CURL *handle) const { curl().easy_cleanup(handle); }
};
using CurlHandle = std::unique_ptr<CURL, FreeCurlHandle>;

} // namespace velto::service
