// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/http/mediaendpoint.h"

#include <vector>

namespace velto::local
{

/// All files of this folder that the service gives out; their bytes are linked into the program.
[[nodiscard]] const std::vector<MediaFile> &mediaFiles();

} // namespace velto::local
