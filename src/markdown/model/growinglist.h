// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/blocknode.h"

/// Items of a list of which it is not settled yet whether it has tasks.
namespace velto::markdown::growinglist
{

[[nodiscard]] qsizetype count(const BlockNode &list);
[[nodiscard]] QList<BlockNode> &childrenAt(BlockNode &list, qsizetype index);
void truncate(BlockNode &list, qsizetype count);
void append(BlockNode &list, RawTaskListItem item);
void setCompleted(BlockNode &list, qsizetype index, bool isCompleted);
/// Makes `list` a list of that kind with the same items, if it isn't one; a list of tasks holds no
/// start of its own.
void setKind(BlockNode &list, bool hasTasks, bool isNumbered, int start);
void setTight(BlockNode &list, bool isTight);

} // namespace velto::markdown::growinglist
