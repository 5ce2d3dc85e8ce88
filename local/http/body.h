// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <httplib.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velto::local
{

/// How a request says where its body ends.
struct BodyFraming
{
    std::uint64_t length = 0;
    bool chunked = false;

    [[nodiscard]] bool empty() const { return length == 0 && !chunked; }
};

[[nodiscard]] BodyFraming bodyFraming(const httplib::Request &request);

/// Reads the body of a request, at most `limit` bytes of it after decompression. False when the
/// answer already says what is wrong (411, 413, 415, 400); the connection has to close then.
[[nodiscard]] bool readBody(const httplib::Request &request, httplib::Response &response,
                            const httplib::ContentReader *reader, std::size_t limit,
                            std::string &body);

using Form = std::map<std::string, std::string, std::less<>>;

/// Decodes application/x-www-form-urlencoded. Absent when an escape is malformed or a name
/// appears twice: which of two values counts must never be in doubt where tokens are given out.
[[nodiscard]] std::optional<Form> parseForm(std::string_view text);

/// Percent-encodes everything but the unreserved characters.
[[nodiscard]] std::string percentEncoded(std::string_view text);

} // namespace velto::local
