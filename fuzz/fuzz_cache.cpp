// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/conversationcache.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace cache = velto::chat::conversationcache;

/// Any bytes load as a conversation with messages or as none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto loaded = cache::parse(
        QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    if (loaded && loaded->messages.isEmpty())
        std::abort();
    return 0;
}
