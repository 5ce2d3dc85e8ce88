// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/agent/texts.h"

#include "local/text.h"

#include <array>

namespace velto::local::texts
{

namespace
{

constexpr std::array Sentences{
    "The morning shift counts the boats before the fog lifts.",
    "Every figure in this report was read twice, once by each of us.",
    "Where the numbers disagree, the older ledger is **usually** right.",
    "A slow tide leaves the quay dry until about `07:40`.",
    "Nobody remembers who painted the third buoy yellow.",
    "Deliveries that arrive after noon are listed with the next day.",
    "The crane needs a new cable, and the *harbour office* knows it.",
    "Two of the five sheds stay locked until the survey is done.",
    "What looks like a detour saves an hour when the wind is from the east.",
    "The summary at the end repeats the points that matter most.",
};

// A block of the long text: headings, paragraphs, lists and quotes in turn.
std::string longBlock(std::size_t index)
{
    const auto sentence = [index](std::size_t offset) {
        return std::string(Sentences[(index * 3 + offset) % Sentences.size()]);
    };
    switch (index % 6) {
    case 0:
        return "## Section " + std::to_string(index / 6 + 1) + "\n\n";
    case 2:
        return "- " + sentence(0) + "\n- " + sentence(1) + "\n- " + sentence(2) + "\n\n";
    case 4:
        return "> " + sentence(0) + "\n\n";
    default:
        return sentence(0) + " " + sentence(1) + " " + sentence(2) + " " + sentence(3) + "\n\n";
    }
}

std::size_t textHash(std::string_view text)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash;
}

std::string quoted(std::string_view prompt)
{
    const std::string line = shortened(prompt, 160);
    return line.empty() ? std::string() : "> " + line + "\n\n";
}

constexpr std::array PleasantBodies{
    R"(Here is how I would go about it:

1. **Write down the goal** in one sentence, so that everyone can tell when it is reached.
2. **Collect what is known.** Most questions are half answered somewhere already.
3. **Try the smallest piece first**, and look at the result before the next one.

| Step | Who | By |
| :--- | :--- | ---: |
| Goal agreed | you and me | today |
| First draft | me | tomorrow |
| Review | the team | Friday |

If one of these dates is a problem, tell me and I will *rearrange the rest*.)",
    R"(There are two good ways to look at this.

### The quick one

Take the answer that works for most cases and note where it doesn't. It costs an hour and is
easy to take back.

### The thorough one

Measure first. A short list is enough:

- [x] what happens today
- [ ] what it costs
- [ ] what would change if we did **nothing**

I would start with the quick one and keep the list beside it.)",
    R"(In short: **yes, and it is less work than it looks.**

The part that takes time is not the change itself but finding every place that depends on it.
Something like this helps:

```sh
grep -rn "old_name" src/ | sort | uniq -c
```

After that:

- change one place and run everything,
- change the others in one go,
- leave a note for whoever comes next.

> A change that can be explained in a sentence is usually the right size.)",
};

} // namespace

std::string help(const std::vector<AgentWord> &words)
{
    std::string text = "I am a demonstration: my answers are written in advance. These words in a "
                       "message choose what I do, and several of them combine in their order.\n\n"
                       "| Word | What I do |\n| :--- | :--- |\n";
    for (const AgentWord &entry : words)
        text += "| `" + std::string(entry.word) + "` | " + std::string(entry.effect) + " |\n";
    return text + "\nAnything else gets a friendly answer.";
}

std::string tableAnswer()
{
    return R"(### Arrivals this week

| Day | Boats | Cargo (t) | Change | Note |
| :--- | ---: | ---: | :---: | :--- |
| Monday | 14 | 312.5 | +4 % | calm sea |
| Tuesday | 11 | 268.0 | −9 % | fog until noon |
| Wednesday | 17 | 401.2 | **+21 %** | two late arrivals |
| Thursday | 16 | 377.9 | +3 % | `shed 4` closed |
| Friday | 19 | 455.4 | **+12 %** | busiest day |

The week ends **18 % above** the last one. Tuesday is the outlier, and the fog explains it.)";
}

std::string codeAnswer()
{
    return R"(A small counter, in three languages. First in C++:

```cpp
#include <map>
#include <string>

// Counts how often each word occurs.
std::map<std::string, int> countWords(std::istream &input)
{
    std::map<std::string, int> counts;
    for (std::string word; input >> word;)
        ++counts[word];
    return counts;
}
```

The same in Python:

```python
from collections import Counter

def count_words(path: str) -> Counter[str]:
    """Counts how often each word occurs."""
    with open(path, encoding="utf-8") as file:
        return Counter(word for line in file for word in line.split())
```

And the result as JSON:

```json
{ "harbour": 12, "tide": 7, "boats": [3, 1, 4], "done": true }
```

Inline it is just `countWords(std::cin)["tide"]`.)";
}

std::string imageAnswer()
{
    return R"(Here is the chart of this year's arrivals:

![Boats and cargo by month](media:charts/arrivals.png)

And the harbour at dusk, for the title page:

![The harbour at dusk](media:pictures/harbour.jpg))";
}

std::string videoAnswer()
{
    return R"(This is how the tide came in this morning:

[The tide, six seconds of it](media:clips/tide.webm)

The dip in the middle is the ferry's wake.)";
}

std::string longText(std::size_t length)
{
    std::string text;
    text.reserve(length + 512);
    for (std::size_t index = 0; text.size() < length; ++index)
        text += longBlock(index);
    text.resize(length);
    return text;
}

std::vector<Step> toolsAnswer()
{
    using nlohmann::json;
    return {
        SayStep{"Let me look that up."},
        ProgressStep{"Searching the harbour log"},
        ToolStep{
            "search_log",
            {{"query", "arrivals"}, {"from", "2026-03-02"}, {"limit", 3}},
            {{"matches", json::array({{{"boat", "Anneke"}, {"time", "06:12"}, {"tons", 31.5}},
                                      {{"boat", "Skua"}, {"time", "07:40"}, {"tons", 18}},
                                      {{"boat", "Miro"}, {"time", "09:05"}, {"tons", 44.25}}})},
             {"complete", true}},
            std::nullopt},
        ProgressStep{"Reading the tide gauge"},
        ToolStep{"read_gauge",
                 {{"station", "north quay"}, {"unit", "m"}},
                 {},
                 "The gauge at “north quay” did not answer within 5 s."},
        ToolStep{"read_file",
                 {{"path", "tides/2026-03.txt"}},
                 "high 02:11 4.1 m\nlow  08:24 0.6 m\nhigh 14:39 4.3 m",
                 std::nullopt},
        ProgressStep{"Writing the answer"},
        SayStep{R"(Three boats came in before ten, with **93.75 t** between them:

- *Anneke* at 06:12
- *Skua* at 07:40
- *Miro* at 09:05

The gauge at the north quay didn't answer, so the tide times are from the printed table: high
water at 02:11 and 14:39.)"},
        SuggestStep{"Show the arrivals as a table"},
    };
}

std::vector<Step> failingAnswer()
{
    return {SayStep{"I was about to tell you the total, but then"},
            FailStep{"The demonstration agent was asked to fail."}};
}

std::vector<Step> droppedAnswer()
{
    return {SayStep{"This sentence ends before its"}, DropStep{}};
}

std::vector<Step> pleasantAnswer(std::string_view prompt)
{
    const std::size_t choice = textHash(prompt) % PleasantBodies.size();
    return {ProgressStep{"Thinking about it"},
            SayStep{quoted(prompt) + PleasantBodies[choice] +
                    "\n\nWrite `help` to see what else this demonstration can do."},
            SuggestStep{choice == 2 ? "Show me some code" : "Which tools do you have?"}};
}

} // namespace velto::local::texts
