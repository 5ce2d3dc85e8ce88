// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

class QQuickWindow;

namespace velto::app
{

/// Prints "[app] first frame after N ms" on standard output once, N counted from the start of the
/// process.
void traceFirstFrame(QQuickWindow &window);

} // namespace velto::app
