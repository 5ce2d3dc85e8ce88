// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/anyjson.h"
#include "base/json.h"

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace velto::chat
{

struct StreamData
{
    std::optional<QString> summary;
    std::optional<QString> suggestion;

    static base::json::Fields jsonFields();
    bool operator==(const StreamData &) const = default;
};

/// One frame of a streamed answer as it arrives. Keys match to the letter.
struct StreamFrame
{
    QString type;
    std::optional<QString> delta;
    std::optional<QString> toolCallId;
    std::optional<QString> toolName;
    std::optional<base::AnyJSON> input;
    std::optional<base::AnyJSON> output;
    std::optional<QString> errorText;
    std::optional<StreamData> data;

    static base::json::Fields jsonFields();
    bool operator==(const StreamFrame &) const = default;
};

/// The frame that a line of the stream holds, with or without its "data: " prefix. Absent for a
/// line that holds none: empty ones, comments, end markers, frames with a field of the wrong type.
[[nodiscard]] std::optional<StreamFrame> frameFromLine(QByteArrayView line);

} // namespace velto::chat
