// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/featurestore.h"

namespace velto::agent
{

/// The bundles that can be installed for the agent.
class MarketplaceStore final : public service::FeatureStore
{
    Q_OBJECT

public:
    using FeatureStore::FeatureStore;
};

} // namespace velto::agent
