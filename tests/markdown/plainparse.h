// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/markdowncontent.h"

#include <ostream>

namespace velto::test
{

/// The blocks of `text` as cmark-gfm has them when it is fed the whole of it and finished, with
/// no bound and nothing kept: what MarkdownContent must give for every text that people write.
[[nodiscard]] markdown::MarkdownContent plainParse(const QString &text);

/// One line a node, for the message of a failing test.
[[nodiscard]] QString dump(const QList<markdown::BlockNode> &blocks);

} // namespace velto::test

namespace velto::markdown
{

inline void PrintTo(const MarkdownContent &content, std::ostream *out)
{
    *out << "\n" << test::dump(content.blocks).toStdString();
}

} // namespace velto::markdown
