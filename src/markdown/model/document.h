// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/blocknode.h"

#include <QByteArray>

#include <string_view>

namespace velto::markdown
{

/// Takes the first line off `rest`, with its end; LF, CR and both together end one.
[[nodiscard]] std::string_view takeLine(std::string_view &rest);

/// The blocks of a whole text.
[[nodiscard]] QList<BlockNode> blocksOfText(std::string_view utf8);

/// The lines that no parser takes any more, as code: with LF as line ends.
[[nodiscard]] BlockNode unreadBlock(const QString &lines);
[[nodiscard]] QString unreadText(std::string_view utf8);

} // namespace velto::markdown
