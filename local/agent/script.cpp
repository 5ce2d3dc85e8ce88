// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/agent/script.h"

#include "local/agent/texts.h"
#include "local/text.h"

#include <algorithm>
#include <charconv>

namespace velto::local
{

namespace
{

constexpr std::size_t DefaultLength = 20'000;
constexpr std::size_t GreatestLength = 5'000'000;

std::vector<std::string> wordsOf(std::string_view prompt)
{
    std::vector<std::string> words(1);
    for (const char c : prompt) {
        const auto byte = static_cast<unsigned char>(c);
        const char lower = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte | 0x20) : c;
        const bool belongs =
            (lower >= 'a' && lower <= 'z') || (lower >= '0' && lower <= '9') || byte >= 0x80;
        if (belongs)
            words.back() += lower;
        else if (!words.back().empty())
            words.emplace_back();
    }
    return words;
}

std::optional<std::size_t> number(const std::string &word)
{
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size() || word.empty())
        return std::nullopt;
    return std::min(value, GreatestLength);
}

void append(Script &script, std::vector<Step> steps)
{
    std::move(steps.begin(), steps.end(), std::back_inserter(script.steps));
}

// True when the word was one of the agent's. A number that belongs to it is consumed.
bool act(Script &script, const std::vector<std::string> &words, std::size_t &index)
{
    const std::string &word = words[index];
    if (word == "long") {
        const auto length =
            index + 1 < words.size() ? number(words[index + 1]) : std::optional<std::size_t>();
        index += length ? 1 : 0;
        script.steps.push_back(SayStep{texts::longText(length.value_or(DefaultLength))});
    } else if (word == "slow") {
        script.slow = true;
    } else if (word == "error") {
        append(script, texts::failingAnswer());
    } else if (word == "drop") {
        append(script, texts::droppedAnswer());
    } else if (word == "help") {
        script.steps.push_back(SayStep{texts::help(agentWords())});
    } else if (word == "tools") {
        append(script, texts::toolsAnswer());
    } else if (word == "table") {
        script.steps.push_back(SayStep{texts::tableAnswer()});
    } else if (word == "code") {
        script.steps.push_back(SayStep{texts::codeAnswer()});
    } else if (word == "image") {
        script.steps.push_back(SayStep{texts::imageAnswer()});
    } else if (word == "video") {
        script.steps.push_back(SayStep{texts::videoAnswer()});
    } else {
        return false;
    }
    return true;
}

// Sections that follow each other with only text between them need a blank line.
void separateSections(Script &script)
{
    bool afterText = false;
    for (Step &step : script.steps) {
        auto *say = std::get_if<SayStep>(&step);
        if (say != nullptr && afterText)
            say->markdown.insert(0, "\n\n");
        if (say != nullptr || std::holds_alternative<ToolStep>(step))
            afterText = say != nullptr;
    }
}

} // namespace

const std::vector<AgentWord> &agentWords()
{
    static const std::vector<AgentWord> words{
        {"tools", "calls three tools, reports progress, and one of the calls fails"},
        {"table", "answers with a table"},
        {"code", "answers with blocks of code in several languages"},
        {"image", "shows images that this service has"},
        {"video", "shows a video that this service has"},
        {"long", "writes as many characters as the number after it says, as in “long 200000”"},
        {"slow", "sends two pieces a second"},
        {"error", "fails after some text"},
        {"drop", "cuts the connection in the middle of a sentence"},
        {"help", "lists these words"},
    };
    return words;
}

Script scriptFor(std::string_view prompt)
{
    Script script;
    const std::vector<std::string> words = wordsOf(prompt);
    for (std::size_t i = 0; i < words.size(); ++i)
        act(script, words, i);
    if (script.steps.empty())
        append(script, texts::pleasantAnswer(prompt));
    separateSections(script);
    return script;
}

} // namespace velto::local
