// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <optional>

namespace velto::markdown
{

/// The name of the tag that a piece of inline HTML opens or closes.
struct HTMLTag
{
    QString name; ///< As written, "br" of `<br/>` and "B" of `</B>`.

    /// The first tag of `html`, absent when it holds none: a comment, a declaration.
    [[nodiscard]] static std::optional<HTMLTag> first(const QString &html);

    bool operator==(const HTMLTag &) const = default;
};

} // namespace velto::markdown
