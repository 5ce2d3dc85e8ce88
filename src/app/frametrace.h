// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

class QQuickWindow;

namespace velto::app
{

/// Measures what the main thread works from one frame of the window to the next, and prints the
/// percentiles to standard output when the program ends.
void traceFrames(QQuickWindow &window);

} // namespace velto::app
