// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>

/// What the system knows of processes.
namespace velto::test
{

/// All processes that `parent` has started, those included that nobody has waited for.
[[nodiscard]] QList<qint64> childrenOf(qint64 parent);

/// False for one that has ended, even if nobody has waited for it.
[[nodiscard]] bool isRunning(qint64 process);

} // namespace velto::test
