// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <rapidcheck.h>

namespace velto::test
{

/// Short texts dense in everything that Markdown has, with line ends of all kinds, characters that
/// are none and surrogates that lost their other half.
[[nodiscard]] rc::Gen<QString> generatedText();

/// A text that a person may have written, with a few pieces of such texts put in or cut out.
[[nodiscard]] rc::Gen<QString> mutatedText();

/// Positions that cut a text of `size` units, in order.
[[nodiscard]] rc::Gen<std::vector<qsizetype>> cutsOf(qsizetype size);

} // namespace velto::test
