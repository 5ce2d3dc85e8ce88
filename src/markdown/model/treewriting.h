// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/blocknode.h"

struct cmark_node;

namespace velto::markdown
{

/// The parser's document for `blocks`, without what it can't hold. The caller frees it.
[[nodiscard]] cmark_node *documentOf(const QList<BlockNode> &blocks);

} // namespace velto::markdown
