// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/featurestore.h"

namespace velto::workspace
{

/// The signed-in user's own profile.
class ProfileStore final : public service::FeatureStore
{
    Q_OBJECT

public:
    using FeatureStore::FeatureStore;
};

} // namespace velto::workspace
