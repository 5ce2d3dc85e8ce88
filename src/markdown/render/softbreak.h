// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

namespace velto::markdown
{

struct SoftBreak
{
    /// What a line end of the source becomes.
    enum class Mode { Space, LineBreak };
};

} // namespace velto::markdown
