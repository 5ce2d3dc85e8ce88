// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// What travels between the browser and `LoopbackServer`, as pure functions over bytes.
namespace velto::auth
{

/// The most that is read of a request; its request line must lie within.
inline constexpr qint64 maximumRequestChunk = 65536;

/// The target in the request line at the front of `chunk`, whatever the method; "/" when there is
/// none or the bytes are not UTF-8. Takes any bytes at all.
[[nodiscard]] QString callbackTarget(QByteArrayView chunk);

/// Whether the target is the redirect's rather than, say, the icon that a browser asks for.
[[nodiscard]] bool isCallback(const QString &target);

/// The whole answer to a redirect: a page that sends the user back to the application.
[[nodiscard]] QByteArray callbackAnswer();

/// The whole answer to anything else.
[[nodiscard]] QByteArray notFoundAnswer();

} // namespace velto::auth
