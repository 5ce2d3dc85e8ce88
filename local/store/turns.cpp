// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/store/turns.h"

#include "local/http/reply.h"
#include "local/text.h"

namespace velto::local
{

using nlohmann::json;

namespace
{

constexpr std::string_view StoppedNote = "_stopped_";

bool isText(const json &part)
{
    const std::string *type = textMember(part, "type");
    return type != nullptr && *type == "text" && textMember(part, "text") != nullptr;
}

std::optional<Turn> readTurn(const json &message)
{
    const std::string *role = textMember(message, "role");
    if (role == nullptr || (*role != "user" && *role != "assistant"))
        return std::nullopt;
    const auto parts = message.find("parts");
    if (parts == message.end() || !parts->is_array())
        return std::nullopt;
    Turn turn{{}, *role};
    if (const std::string *id = textMember(message, "id"))
        turn.id = *id;
    for (const json &part : *parts) {
        if (!part.is_object())
            return std::nullopt;
        if (isText(part))
            turn.parts.push_back(textPart(part["text"].get<std::string>()));
    }
    return turn;
}

bool isSilentAnswer(const Turn &turn)
{
    return turn.role == "assistant" && trimmed(plainText(turn)).empty();
}

// The first `length` bytes of the turn's text, with the tools on the way.
json partsUpTo(const Turn &turn, std::size_t length)
{
    json kept = json::array();
    for (const json &part : turn.parts) {
        if (!isText(part)) {
            kept.push_back(part);
            continue;
        }
        const auto &text = part["text"].get_ref<const std::string &>();
        if (text.size() > length) {
            if (length > 0)
                kept.push_back(textPart(text.substr(0, length)));
            return kept;
        }
        kept.push_back(part);
        length -= text.size();
    }
    return kept;
}

void appendText(json &parts, std::string_view text)
{
    if (parts.empty() || !isText(parts.back()))
        parts.push_back(textPart(std::string(trimmed(text))));
    else
        parts.back()["text"].get_ref<std::string &>() += text;
}

// The stored turn with what the client has added; absent when the posted one is another.
std::optional<Turn> continued(const Turn &stored, const Turn &posted)
{
    if (stored.role != posted.role)
        return std::nullopt;
    const std::string was = plainText(stored);
    const std::string now = plainText(posted);
    if (was == now)
        return stored;
    if (stored.role != "assistant" || !now.ends_with(StoppedNote))
        return std::nullopt;
    // What the client has shown may be shorter than what was sent.
    std::string_view shown = std::string_view(now).substr(0, now.size() - StoppedNote.size());
    const bool underText = shown.ends_with("\n\n");
    if (underText)
        shown.remove_suffix(2);
    if (!was.starts_with(shown))
        return std::nullopt;
    Turn turn = stored;
    turn.parts = partsUpTo(stored, shown.size());
    while (underText && !turn.parts.empty() && !isText(turn.parts.back()))
        turn.parts.erase(turn.parts.size() - 1);
    appendText(turn.parts, std::string_view(now).substr(shown.size()));
    return turn;
}

} // namespace

std::string plainText(const Turn &turn)
{
    std::string text;
    for (const json &part : turn.parts) {
        if (isText(part))
            text += part["text"].get_ref<const std::string &>();
    }
    return text;
}

json textPart(std::string text)
{
    return {{"type", "text"}, {"text", std::move(text)}};
}

std::optional<std::vector<Turn>> readTurns(const json &messages)
{
    if (!messages.is_array())
        return std::nullopt;
    std::vector<Turn> turns;
    for (const json &message : messages) {
        auto turn = readTurn(message);
        if (!turn)
            return std::nullopt;
        turns.push_back(std::move(*turn));
    }
    return turns;
}

std::vector<Turn> mergeTurns(const std::vector<Turn> &stored, const std::vector<Turn> &posted)
{
    std::vector<Turn> merged;
    std::size_t next = 0;
    bool same = true;
    for (const Turn &turn : posted) {
        while (same && next < stored.size() && turn.role == "user" && isSilentAnswer(stored[next]))
            merged.push_back(stored[next++]);
        auto kept = same && next < stored.size() ? continued(stored[next], turn) : std::nullopt;
        same = kept.has_value();
        next += same ? 1 : 0;
        if (kept)
            merged.push_back(std::move(*kept));
        else
            merged.push_back(turn);
    }
    return merged;
}

} // namespace velto::local
