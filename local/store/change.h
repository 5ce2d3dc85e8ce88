// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/refusal.h"
#include "local/store/database.h"

namespace velto::local
{

/// Runs `work`, which gives back a `JsonAnswer`, as one transaction that holds the database's
/// lock. A refusal undoes what it has written, and so does a statement that fails.
template<typename Work>
[[nodiscard]] JsonAnswer change(Database &database, Work work)
{
    const auto guard = database.lock();
    Transaction transaction(database);
    if (!transaction.isOpen())
        return storageFailure();
    JsonAnswer answer = work();
    if (answer && !transaction.commit())
        return storageFailure();
    return answer;
}

} // namespace velto::local
