// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoroTask>

#include <QString>

namespace velto::platform
{

/// Has the desktop show a note for a while. False when it has nobody to do so, or not within two
/// seconds. Main thread.
[[nodiscard]] QCoro::Task<bool> notify(QString title, QString text);

} // namespace velto::platform
