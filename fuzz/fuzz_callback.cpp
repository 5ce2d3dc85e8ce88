// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/loopbackwire.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Any bytes that a local program sends have a target, and one without blanks.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView chunk(data, static_cast<qsizetype>(size));
    const QString target = velto::auth::callbackTarget(chunk);
    if (target.isEmpty() || target.contains(u' '))
        std::abort();
    return velto::auth::isCallback(target) && !target.startsWith(u'/') ? -1 : 0;
}
