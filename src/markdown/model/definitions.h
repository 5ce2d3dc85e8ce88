// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/leafreader.h"

namespace velto::markdown
{

/// Targets up to this size cost nothing worth counting.
inline constexpr qint64 shortTarget = 500;

/// Bytes of the longest target from `first` up to, and without, `end`; 0 when all are short.
[[nodiscard]] qint64 longestTarget(const cmark_map_entry *first, const cmark_map_entry *end);

/// Whether the definitions from `first` up to `end` change what was read before they came.
[[nodiscard]] bool changeWhatWasRead(const cmark_map_entry *first, const cmark_map_entry *end,
                                     const LabelSet &labels, const LeafReader &leaves);

} // namespace velto::markdown
