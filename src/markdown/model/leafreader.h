// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/inlinenode.h"
#include "markdown/model/parser.h"

#include <string>
#include <string_view>
#include <unordered_set>

namespace velto::markdown
{

/// Labels in texts that were read, so that a later definition knows whether it changes any. Coarser
/// than the parser's own comparison: what it takes for equal, this does too.
class LabelSet final
{
public:
    void addLabelsIn(std::string_view text);
    /// Whether a definition with this label may change a text that was read.
    [[nodiscard]] bool mayContain(std::string_view label) const;
    [[nodiscard]] bool isEmpty() const { return m_keys.empty() && !m_hasOdd; }
    void clear();

private:
    std::unordered_set<std::string> m_keys;
    bool m_hasOdd = false; ///< A label whose letters can't be compared cheaply.
};

/// Reads the inlines of one leaf block after the other, in the order of the text, and bounds what
/// they cost.
///
/// A leaf becomes one plain text, line ends as spaces, when reading it would nest deeper than
/// `deepest` or when all leaves so far would cost more than `allowance` says.
class LeafReader final
{
public:
    static constexpr int deepest = 64;

    /// The inlines of a paragraph, heading or table cell, from its raw text.
    [[nodiscard]] QList<InlineNode> read(cmark_parser *parser, cmark_node *leaf);

    /// Collects the labels of all that is read into `labels` until told otherwise.
    void setLabels(LabelSet *labels) { m_labels = labels; }
    /// The longest target of a definition, in bytes: each use costs that much.
    void setLongestTarget(qint64 bytes) { m_longestTarget = bytes; }
    [[nodiscard]] qint64 longestTarget() const { return m_longestTarget; }

private:
    bool admits(std::string_view text);

    qint64 m_bytes = 0;
    qint64 m_work = 0; // in tenths of a microsecond, roughly
    qint64 m_longestTarget = 0;
    LabelSet *m_labels = nullptr;
};

} // namespace velto::markdown
