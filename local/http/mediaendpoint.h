// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/route.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace velto::local
{

/// A file that is part of the program.
struct MediaFile
{
    std::string_view path;
    std::string_view type;
    std::string_view content;
};

/// Null when there is no such file. The path is a name and never touches the file system.
[[nodiscard]] const MediaFile *findMedia(std::string_view path);

/// The bytes of a range, first and last.
struct ByteRange
{
    std::uint64_t first = 0;
    std::uint64_t last = 0;

    bool operator==(const ByteRange &) const = default;
};

struct RangeAnswer
{
    enum class Kind { Whole, Part, Unsatisfiable } kind = Kind::Whole;
    ByteRange range;
};

/// Reads a Range header against `size`. What isn't one single range of bytes asks for the whole.
[[nodiscard]] RangeAnswer readRange(std::string_view header, std::uint64_t size);

void replyMedia(const Call &call, httplib::Response &response);

} // namespace velto::local
