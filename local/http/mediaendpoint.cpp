// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/http/mediaendpoint.h"

#include "local/auth/secrets.h"
#include "local/http/reply.h"
#include "local/media/mediafiles.h"
#include "local/text.h"

#include <algorithm>
#include <charconv>

namespace velto::local
{

namespace
{

std::string entityTag(const MediaFile &file)
{
    return "\"" + sha256Text(file.content).substr(0, 22) + "\"";
}

std::optional<std::uint64_t> readNumber(std::string_view text)
{
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    if (text.empty() || error != std::errc() || end != text.end())
        return std::nullopt;
    return value;
}

// True when one of the listed tags is `tag`, a weak one included.
bool listsTag(std::string_view list, const std::string &tag)
{
    while (!list.empty()) {
        const auto comma = list.find(',');
        std::string_view entry = trimmed(list.substr(0, comma));
        list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
        if (entry.starts_with("W/"))
            entry.remove_prefix(2);
        if (entry == tag || entry == "*")
            return true;
    }
    return false;
}

// A range is good only for the version that the client has the rest of.
bool rangeCounts(const httplib::Request &request, const std::string &tag)
{
    return request.has_header("Range") &&
           (!request.has_header("If-Range") || request.get_header_value("If-Range") == tag);
}

} // namespace

const MediaFile *findMedia(std::string_view path)
{
    const auto &files = mediaFiles();
    const auto file = std::find_if(files.begin(), files.end(),
                                   [path](const MediaFile &one) { return one.path == path; });
    return file == files.end() ? nullptr : &*file;
}

RangeAnswer readRange(std::string_view header, std::uint64_t size)
{
    using Kind = RangeAnswer::Kind;
    constexpr std::string_view Unit = "bytes=";
    const auto dash = header.find('-');
    if (!header.starts_with(Unit) || dash == std::string_view::npos)
        return {};
    const std::string_view from = trimmed(header.substr(Unit.size(), dash - Unit.size()));
    const std::string_view to = trimmed(header.substr(dash + 1));
    const auto first = readNumber(from);
    const auto last = readNumber(to);
    if (from.empty() && last)
        return *last == 0 || size == 0
                   ? RangeAnswer{Kind::Unsatisfiable, {}}
                   : RangeAnswer{Kind::Part, {size - std::min(*last, size), size - 1}};
    if (!first || (!to.empty() && !last) || (last && *last < *first))
        return {};
    if (*first >= size)
        return {Kind::Unsatisfiable, {}};
    return {Kind::Part, {*first, last ? std::min(*last, size - 1) : size - 1}};
}

void replyMedia(const Call &call, httplib::Response &response)
{
    const MediaFile *file = findMedia(call.captures[0]);
    if (file == nullptr)
        return replyError(response, 404, "unknown_media", "There is no such file.");
    const std::string tag = entityTag(*file);
    response.set_header("ETag", tag);
    response.set_header("Accept-Ranges", "bytes");
    response.set_header("Cache-Control", "private, max-age=3600");
    if (listsTag(call.request.get_header_value("If-None-Match"), tag)) {
        response.status = 304;
        return;
    }
    const std::string size = std::to_string(file->content.size());
    std::string_view content = file->content;
    response.status = 200;
    if (rangeCounts(call.request, tag)) {
        const auto [kind, range] =
            readRange(call.request.get_header_value("Range"), content.size());
        if (kind == RangeAnswer::Kind::Unsatisfiable) {
            response.set_header("Content-Range", "bytes */" + size);
            return replyError(response, 416, "bad_range", "The range lies beyond the file.");
        }
        if (kind == RangeAnswer::Kind::Part) {
            response.status = 206;
            response.set_header("Content-Range", "bytes " + std::to_string(range.first) + "-" +
                                                     std::to_string(range.last) + "/" + size);
            content = content.substr(range.first, range.last - range.first + 1);
        }
    }
    response.set_content(content.data(), content.size(), std::string(file->type));
}

} // namespace velto::local
