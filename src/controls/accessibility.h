// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

namespace velto::controls
{

/// Makes items report to assistive technology whether they are disabled, which Qt Quick leaves out.
/// To be called once, before the first window. Costs nothing while nobody asks.
void installAccessibility();

} // namespace velto::controls
