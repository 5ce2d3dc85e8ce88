// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/featurestore.h"

namespace velto::workspace
{

/// The administrator's view: totals, users, workspaces, catalog.
class AdminStore final : public service::FeatureStore
{
    Q_OBJECT

public:
    using FeatureStore::FeatureStore;
};

} // namespace velto::workspace
