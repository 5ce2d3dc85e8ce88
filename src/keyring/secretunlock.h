// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

struct _GCancellable;
struct _GDBusConnection;

namespace velto::keyring
{

/// Has the Secret Service unlock the entry or collection at `path`, which may ask the user and then
/// lasts until the user has answered, the service has gone or `cancelled` fires. False when it
/// stayed locked for one of these reasons.
///
/// libsecret does the same but waits for good when its cancellable fires, or the service goes,
/// while the prompt is open.
[[nodiscard]] bool unlockSecret(_GDBusConnection *bus, const char *path, _GCancellable *cancelled);

} // namespace velto::keyring
