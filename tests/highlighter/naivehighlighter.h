// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/code/tokenrange.h"

#include <QString>
#include <QStringList>

/// One name of each family of languages.
[[nodiscard]] QStringList languageFamilies();

/// The keywords of a family, for generated code.
[[nodiscard]] QStringList keywordsOf(const QString &family);

/// Each rule as one regular expression over the whole text, each match compared with all tokens
/// before it. Slow, and plain enough to be read next to the rules. `family` is one of
/// `languageFamilies`. The tokens are sorted by position.
[[nodiscard]] velto::presentation::TokenRanges naiveTokens(const QString &text,
                                                           const QString &family);
