// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

class QWindow;

namespace velto::platform
{

/// Shows the window, in front of the others and with the keyboard, as far as the desktop lets it.
/// `token` is what the desktop gave for the user's click, and may be empty. Main thread.
void bringForward(QWindow &window, const QByteArray &token = {});

} // namespace velto::platform
