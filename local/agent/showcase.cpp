// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/agent/showcase.h"

#include "local/agent/texts.h"

#include <algorithm>
#include <array>

namespace velto::local::texts
{

namespace
{

using nlohmann::json;

struct Sample
{
    std::string_view language;
    std::string_view code;
};

constexpr std::array Samples{
    Sample{"swift", R"(// A boat knows when it came in.
struct Boat: Identifiable {
    let id: Int
    var name = "Anneke"
    func isLate(after hour: Int) -> Bool { return id > 3 && hour > 12 }
}
)"},
    Sample{"python", R"(@dataclass
class Boat:
    """When it came in, in hours since midnight."""
    name: str = "Skua"
    hour: float = 7.66

    def is_late(self) -> bool:
        return self.hour > 12  # after noon
)"},
    Sample{"javascript", R"(// Counts the boats of each hour.
export const perHour = (boats) => {
  const counts = new Map();
  for (const { hour } of boats) counts.set(hour, (counts.get(hour) ?? 0) + 1);
  return `${counts.size} hours`;
};
)"},
    Sample{"typescript", R"(interface Boat { readonly name: string; tons?: number }

/* The heaviest, or nothing. */
async function heaviest(boats: Boat[]): Promise<Boat | undefined> {
  return boats.sort((a, b) => (b.tons ?? 0) - (a.tons ?? 0))[0];
}
)"},
    Sample{"json", R"({ "name": "Miro", "tons": 44.25, "late": false, "berths": [3, 1, null] }
)"},
    Sample{"bash", R"(#!/bin/bash
# Lists the boats that came in before noon.
for file in log/*.txt; do
  if grep -q "arrived" "$file"; then echo "${file%.txt}"; fi
done
)"},
    Sample{"go", R"(package harbour

// Late says whether a boat came in after noon.
func (b *Boat) Late() (bool, error) {
	if b == nil || b.Hour < 0 {
		return false, fmt.Errorf("no boat: %v", b)
	}
	return b.Hour >= 12, nil
}
)"},
    Sample{"rust", R"(/// The boats after noon.
pub fn late(boats: &[Boat]) -> impl Iterator<Item = &Boat> {
    boats.iter().filter(|boat| match boat.hour {
        12..=23 => true,
        _ => false,
    })
}
)"},
    Sample{"ruby", R"(# A harbour has berths.
class Harbour
  attr_reader :berths

  def free
    @berths.reject { |berth| berth.taken? }.map(&:number) unless @berths.nil?
  end
end
)"},
    Sample{"html", R"(<!-- The board at the quay -->
<table class="arrivals" data-rows="3">
  <tr><td id="first">Anneke</td><td>06:12 &ndash; 31.5&nbsp;t</td></tr>
</table>
)"},
    Sample{"css", R"(/* The board at the quay */
.arrivals td:first-child {
  color: #1f6feb;
  padding: 0.25rem 12px !important;
}
)"},
    Sample{"yaml", R"(# The watch of this week
watch:
  - name: "Jonas"
    days: [mon, tue]
    nights: false
)"},
    Sample{"fortran", R"(! No client knows the colours of this one.
program tide
  print *, 4.1 - 0.6
end program tide
)"},
};

std::string fenced(const Sample &sample)
{
    return "```" + std::string(sample.language) + "\n" + std::string(sample.code) + "```\n";
}

ToolStep logLookup(std::size_t index)
{
    return {
        "search_log",
        {{"query", "berth " + std::to_string(index + 1)}, {"limit", 2}},
        {{"matches",
          json::array({{{"boat", "Anneke"}, {"tons", 31.5}}, {{"boat", "Skua"}, {"tons", 18}}})}},
        index % 9 == 8 ? std::optional<std::string>("The log is being written.") : std::nullopt};
}

} // namespace

std::string markdownAnswer()
{
    return R"(# Every kind of Markdown

A paragraph with *emphasis*, **strong text**, ***both***, ~~struck text~~, `inline code`, a
[link](https://example.org/path "A title") and a bare address, https://example.org. A line ends  
here and goes on below.

## Lists

- One item, long enough to need a second line in most windows, so that it can be seen where the
  text stands below itself
  - Second level
    - Third level
1. First
2. Second, with `code`
   1. Nested
- [x] done
- [ ] not yet

## Quotes

> A quote with a list in it:
>
> - one
> - two
>
> > And a quote in the quote.

### Third level

#### Fourth level

---

| Left | Middle | Right |
| :--- | :---: | ---: |
| `code` | **bold** | 1,234.50 |
| a longer cell | x | 7 |

    Code by indentation alone.

Other scripts: 港に三隻の船が着いた。 Ελληνικά, кириллица, हिन्दी. Emoji: ⛵ 🌊 👩🏽‍🔧.

مرحبا، هذه فقرة من اليمين إلى اليسار فيها `code` ورقم 42.

A word that is too long for a line: Hafendampfschifffahrtsgesellschaftskapitänsmützenabzeichenverwaltung.)";
}

std::string languagesAnswer()
{
    std::string text = "The same harbour in twelve languages, and in one more:\n";
    for (const Sample &sample : Samples)
        text += "\n**" + std::string(sample.language) + "**\n\n" + fenced(sample);
    return text;
}

std::string missingAnswer()
{
    return R"(A picture that nobody has:

![The second harbour](media:pictures/nowhere.png)

A video that nobody has:

[The second tide](media:clips/nowhere.mp4)

And a picture that is none:

![A clip](media:clips/tide.webm))";
}

std::vector<Step> parallelAnswer()
{
    const json rows = json::array({{{"hour", 6}, {"level", 3.2}},
                                   {{"hour", 7}, {"level", 2.8}},
                                   {{"hour", 8}, {"level", 2.1}},
                                   {{"hour", 9}, {"level", 1.4}}});
    return {
        ProgressStep{"Asking four instruments at once"},
        ToolsStep{{
            {"read_gauge", {{"station", "south quay"}, {"unit", "m"}}, rows, std::nullopt},
            {"list_watches", {}, "Jonas, Mei, Robin", std::nullopt},
            {"read_camera",
             {{"camera", "lighthouse"}, {"exposure", {{"seconds", 2}, {"iso", 800}}}},
             {},
             "The camera at the lighthouse reports: lens covered with salt (code 0x1F)."},
            {"measure_everything_that_the_wind_station_above_the_old_customs_house_can_measure",
             {{"since", "06:00"}},
             {},
             std::nullopt},
        }},
        SayStep{"Three of the four have answered; the camera needs a cloth."},
        SuggestStep{"Who is on watch?"},
    };
}

std::vector<Step> richAnswer(std::size_t length)
{
    constexpr std::size_t StretchLength = 2500;
    std::vector<Step> steps;
    for (std::size_t index = 0, left = length; left > 0; ++index) {
        std::string text;
        if (index % 4 != 3)
            text = fenced(Samples[index % Samples.size()]) + "\n";
        const std::size_t size = std::min(left, StretchLength);
        text += longText(StretchLength - text.size());
        text.resize(size, '.');
        left -= size;
        steps.push_back(SayStep{std::move(text)});
        if (size == StretchLength)
            steps.push_back(logLookup(index));
    }
    return steps;
}

} // namespace velto::local::texts
