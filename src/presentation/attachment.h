// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

namespace velto::presentation
{

/// Bytes that a file may have to be put into a draft.
inline constexpr qint64 attachmentLimit = 250LL * 1024;

/// What is added to a draft, or why the file can't be attached, in words for the user.
using Attachment = tl::expected<QString, QString>;

/// The file as a block of code whose info text is its name. Nothing in it is changed: it is text
/// that the user may edit.
[[nodiscard]] Attachment attachment(const QString &fileName, const QByteArray &bytes);

/// Reads a regular file and no more of it than the limit needs. Blocks; any thread.
[[nodiscard]] Attachment readAttachment(const QString &path);

/// What is said of a file that is no text.
[[nodiscard]] QString notTextMessage();

} // namespace velto::presentation
