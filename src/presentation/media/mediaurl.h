// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>
#include <QUrl>

#include <optional>

namespace velto::presentation
{

/// Where media is, and whether it takes the access token to get it.
struct MediaAddress
{
    QUrl url;
    bool needsAuth = false;
    bool operator==(const MediaAddress &) const = default;
};

/// The file `path` of the service at `baseURL`; a "%" in it is part of a name. Nothing for an empty
/// path, for text that UTF-8 can't express, and for dot segments that lead out of the service's
/// media, however often they are encoded.
[[nodiscard]] std::optional<QUrl> mediaURL(QStringView path, const QUrl &baseURL);

/// What a URL of an answer stands for: "media:" URLs name files of the service, all others are what
/// they are. Only what lies below "/v1/media/" at the very origin of `baseURL` needs the token.
/// Nothing for an empty URL and where `mediaURL` gives nothing.
[[nodiscard]] std::optional<MediaAddress> resolveMediaURL(const QUrl &rawURL, const QUrl &baseURL);

} // namespace velto::presentation
