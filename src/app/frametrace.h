// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

class QQuickWindow;

namespace velto::app
{

/// Measures what the main thread works from one frame of the window to the next, and the time from
/// a key press that writes something to the end of the frame that shows it. Prints the percentiles
/// of both to standard output when the program ends.
void traceFrames(QQuickWindow &window);

} // namespace velto::app
