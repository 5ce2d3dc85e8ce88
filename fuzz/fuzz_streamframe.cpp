// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/chatstreamevent.h"

#include <cstddef>
#include <cstdint>

using namespace velto::chat;

/// Any bytes, taken as lines of a stream, decode and apply without a crash.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const ChatMessage empty = newMessage(ChatMessage::Role::Assistant);
    ChatMessage message = empty;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    for (const QByteArray &line : bytes.split('\n')) {
        auto frame = frameFromLine(line);
        if (!frame)
            continue;
        if (const auto event = eventFrom(std::move(*frame)))
            applyEvent(*event, message);
    }
    return message.contentVolume() < 0 ? 1 : 0;
}
