// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/featurestore.h"

namespace velto::agent
{

/// How the agent is configured for the signed-in user: model, library, tools, integrations.
class VeltoSettingsStore final : public service::FeatureStore
{
    Q_OBJECT

public:
    using FeatureStore::FeatureStore;
};

} // namespace velto::agent
