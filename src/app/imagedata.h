// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/images/defaultnetworkimageloader.h"
#include "service/imagefetch.h"

namespace velto::app
{

/// The image loader's way to the network. `transport` outlives what uses it.
[[nodiscard]] markdown::ImageData imageData(service::Transport &transport,
                                            service::ImageFetchLimits limits = {});

} // namespace velto::app
