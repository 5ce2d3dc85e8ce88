// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QUuid>

#include <optional>

namespace velto::base
{

/// `bytes` as text, or absent when they are not valid UTF-8.
[[nodiscard]] std::optional<QString> utf8Text(QByteArrayView bytes);

/// As the service expects ids: upper-case hexadecimal with hyphens and no braces.
[[nodiscard]] QString uuidText(const QUuid &id);

/// Percent-encodes for one or more segments of a URL's path; "/" stays as it is.
[[nodiscard]] QString pathEncoded(const QString &text);

/// Percent-encodes a key or a value of an "application/x-www-form-urlencoded" body.
[[nodiscard]] QByteArray formEncoded(const QString &text);

} // namespace velto::base
