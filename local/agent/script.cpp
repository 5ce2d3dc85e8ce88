// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/agent/script.h"

#include "local/agent/showcase.h"
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

/// The words of a prompt, one after the other.
struct Words
{
    const std::vector<std::string> all;
    std::size_t at = 0;

    /// The number behind the present word, which then belongs to it.
    std::size_t numberOr(std::size_t fallback)
    {
        const auto found = at + 1 < all.size() ? number(all[at + 1]) : std::optional<std::size_t>();
        at += found ? 1 : 0;
        return found.value_or(fallback);
    }
};

std::vector<Step> saying(std::string markdown)
{
    return {SayStep{std::move(markdown)}};
}

std::vector<Step> everything()
{
    Script all;
    append(all, texts::toolsAnswer());
    for (std::string text : {texts::markdownAnswer(), texts::languagesAnswer(),
                             texts::imageAnswer(), texts::videoAnswer(), texts::missingAnswer()})
        append(all, saying(std::move(text)));
    append(all, texts::parallelAnswer());
    return all.steps;
}

struct Action
{
    AgentWord word;
    std::vector<Step> (*steps)(Words &words);
};

const std::vector<Action> &actions()
{
    static const std::vector<Action> all{
        {{"tools", "calls three tools, reports progress, and one of the calls fails"},
         [](Words &) { return texts::toolsAnswer(); }},
        {{"parallel", "calls four tools at once, which end one after the other"},
         [](Words &) { return texts::parallelAnswer(); }},
        {{"table", "answers with a table"}, [](Words &) { return saying(texts::tableAnswer()); }},
        {{"code", "answers with blocks of code in several languages"},
         [](Words &) { return saying(texts::codeAnswer()); }},
        {{"languages", "answers with a block of code in every language that has colours"},
         [](Words &) { return saying(texts::languagesAnswer()); }},
        {{"markdown", "answers with every kind of Markdown"},
         [](Words &) { return saying(texts::markdownAnswer()); }},
        {{"image", "shows images that this service has"},
         [](Words &) { return saying(texts::imageAnswer()); }},
        {{"video", "shows a video that this service has"},
         [](Words &) { return saying(texts::videoAnswer()); }},
        {{"missing", "refers to images and a video that this service doesn't have"},
         [](Words &) { return saying(texts::missingAnswer()); }},
        {{"showcase", "does all of the above"}, [](Words &) { return everything(); }},
        {{"long", "writes as many characters as the number after it says, as in “long 200000”"},
         [](Words &words) { return saying(texts::longText(words.numberOr(DefaultLength))); }},
        {{"rich", "does the same with code and tool calls in between, as in “rich 100000”"},
         [](Words &words) { return texts::richAnswer(words.numberOr(DefaultLength)); }},
        {{"slow", "sends two pieces a second"}, nullptr},
        {{"error", "fails after some text"}, [](Words &) { return texts::failingAnswer(); }},
        {{"drop", "cuts the connection in the middle of a sentence"},
         [](Words &) { return texts::droppedAnswer(); }},
        {{"help", "lists these words"}, [](Words &) { return saying(texts::help(agentWords())); }},
    };
    return all;
}

void act(Script &script, Words &words)
{
    const auto action = std::ranges::find(actions(), words.all[words.at],
                                          [](const Action &one) { return one.word.word; });
    if (action == actions().end())
        return;
    if (action->steps != nullptr)
        append(script, action->steps(words));
    else
        script.slow = true;
}

// Sections that follow each other with only text between them need a blank line.
void separateSections(Script &script)
{
    bool afterText = false;
    for (Step &step : script.steps) {
        auto *say = std::get_if<SayStep>(&step);
        if (say != nullptr && afterText)
            say->markdown.insert(0, "\n\n");
        if (say != nullptr || std::holds_alternative<ToolStep>(step) ||
            std::holds_alternative<ToolsStep>(step))
            afterText = say != nullptr;
    }
}

} // namespace

const std::vector<AgentWord> &agentWords()
{
    static const std::vector<AgentWord> words = [] {
        std::vector<AgentWord> all;
        for (const Action &action : actions())
            all.push_back(action.word);
        return all;
    }();
    return words;
}

Script scriptFor(std::string_view prompt)
{
    Script script;
    for (Words words{wordsOf(prompt)}; words.at < words.all.size(); ++words.at)
        act(script, words);
    if (script.steps.empty())
        append(script, texts::pleasantAnswer(prompt));
    separateSections(script);
    return script;
}

} // namespace velto::local
