// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/http/body.h"

#include "local/http/reply.h"

#include <charconv>

namespace velto::local
{

namespace
{

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

std::optional<std::string> decoded(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            result += text[i] == '+' ? ' ' : text[i];
            continue;
        }
        const int high = i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
        if (low < 0)
            return std::nullopt;
        result += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return result;
}

bool refuse(httplib::Response &response, int status, std::string_view code,
            std::string_view message)
{
    replyError(response, status, code, message);
    return false;
}

} // namespace

BodyFraming bodyFraming(const httplib::Request &request)
{
    BodyFraming framing;
    framing.chunked = request.has_header("Transfer-Encoding");
    const std::string length = request.get_header_value("Content-Length");
    std::from_chars(length.data(), length.data() + length.size(), framing.length);
    return framing;
}

bool readBody(const httplib::Request &request, httplib::Response &response,
              const httplib::ContentReader *reader, std::size_t limit, std::string &body)
{
    const BodyFraming framing = bodyFraming(request);
    if (framing.length > limit)
        return refuse(response, 413, "too_large", "The body is too large.");
    const bool mayLackLength = reader == nullptr || request.method == "DELETE";
    if (framing.empty() && !request.has_header("Content-Length"))
        return mayLackLength || refuse(response, 411, "length_required", "The body has no length.");
    if (reader == nullptr)
        return framing.empty() || refuse(response, 400, "no_body", "This method takes no body.");
    if (request.is_multipart_form_data())
        return refuse(response, 415, "unsupported_type", "Multipart bodies are not accepted.");
    bool tooLarge = false;
    const bool whole = (*reader)([&](const char *data, std::size_t size) {
        tooLarge = body.size() + size > limit;
        if (!tooLarge)
            body.append(data, size);
        return !tooLarge;
    });
    if (tooLarge)
        return refuse(response, 413, "too_large", "The body is too large.");
    if (!whole)
        return refuse(response, 400, "bad_body", "The body could not be read.");
    // The library has set a status of its own while reading.
    response.status = -1;
    return true;
}

std::optional<Form> parseForm(std::string_view text)
{
    Form form;
    while (!text.empty()) {
        const auto end = text.find('&');
        const std::string_view pair = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (pair.empty())
            continue;
        const auto equals = pair.find('=');
        const auto name = decoded(pair.substr(0, equals));
        const auto value = decoded(equals == std::string_view::npos ? "" : pair.substr(equals + 1));
        if (!name || !value || !form.emplace(*name, *value).second)
            return std::nullopt;
    }
    return form;
}

std::string percentEncoded(std::string_view text)
{
    static constexpr std::string_view Hex = "0123456789ABCDEF";
    static constexpr std::string_view Plain = "-._~";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool alphanumeric = (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z';
        if (alphanumeric || (byte >= '0' && byte <= '9') || Plain.find(c) != Plain.npos) {
            result += c;
        } else {
            result += '%';
            result += Hex[byte >> 4];
            result += Hex[byte & 15];
        }
    }
    return result;
}

} // namespace velto::local
