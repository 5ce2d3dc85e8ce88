// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/definitions.h"

#include <algorithm>

namespace velto::markdown
{

qint64 longestTarget(const cmark_map_entry *first, const cmark_map_entry *end)
{
    qint64 longest = 0;
    for (const cmark_map_entry *entry = first; entry != end; entry = entry->next) {
        const auto *reference = reinterpret_cast<const cmark_reference *>(entry);
        longest = std::max<qint64>(longest, reference->url.len + reference->title.len);
    }
    return longest > shortTarget ? longest : 0;
}

bool changeWhatWasRead(const cmark_map_entry *first, const cmark_map_entry *end,
                       const LabelSet &labels, const LeafReader &leaves)
{
    if (labels.isEmpty())
        return false;
    if (longestTarget(first, end) > leaves.longestTarget())
        return true;
    for (const cmark_map_entry *entry = first; entry != end; entry = entry->next) {
        if (labels.mayContain(reinterpret_cast<const char *>(entry->label)))
            return true;
    }
    return false;
}

} // namespace velto::markdown
