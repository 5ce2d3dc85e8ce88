// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/featurestore.h"

namespace velto::workspace
{

/// What is known of one workspace at a time: record, members, invitations, audit log.
class WorkspaceStore final : public service::FeatureStore
{
    Q_OBJECT

public:
    using FeatureStore::FeatureStore;
};

} // namespace velto::workspace
