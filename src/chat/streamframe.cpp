// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/streamframe.h"

namespace velto::chat
{

std::optional<StreamFrame> frameFromLine(QByteArrayView line)
{
    constexpr QByteArrayView prefix("data: ");
    const QByteArrayView payload = line.startsWith(prefix) ? line.sliced(prefix.size()) : line;
    if (payload.isEmpty())
        return std::nullopt;
    auto frame = base::json::decode<StreamFrame>(payload, base::json::Keys::Plain);
    if (!frame)
        return std::nullopt;
    return std::move(*frame);
}

} // namespace velto::chat
