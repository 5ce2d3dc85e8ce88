// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QImage>

#include <chrono>
#include <functional>
#include <optional>

namespace velto::markdown
{

/// What one decoding may cost at most. A few kilobytes can describe gigabytes of pixels, or keep a
/// decoder busy for minutes; either then fails like bytes that are no image.
struct DecodingLimits
{
    /// 256 MiB decoded: the pictures of today's telephones fit, if barely.
    qint64 pixels = qint64(64) * 1024 * 1024;
    /// Looked at when the decoder asks for more bytes.
    std::chrono::milliseconds time = std::chrono::seconds(10);
};

/// The first image in `bytes`, in sRGB and in a format that is drawn without conversion, with its
/// pixels as they are stored: what a camera notes about its orientation is not applied.
///
/// Nothing comes back for what is not one of the pixel formats that documents use (PNG, JPEG, GIF,
/// WebP, BMP, ICO, TIFF, JPEG 2000, HEIF and AVIF, as far as a plug-in for them is installed), is
/// damaged or goes beyond the limits. SVG is never decoded, plug-in or not: it is a program's worth
/// of instructions that may name further files. Takes long; any thread. `isUnwanted` is asked now
/// and then and ends the work.
[[nodiscard]] std::optional<QImage> decodeImage(const QByteArray &bytes,
                                                const DecodingLimits &limits = {},
                                                const std::function<bool()> &isUnwanted = {});

} // namespace velto::markdown
