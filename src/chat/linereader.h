// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace velto::chat
{

/// Cuts a stream of bytes into lines at LF, CR and CRLF, whatever the pieces in which it comes.
/// Each byte is looked at once. Lines have no length limit of their own.
class LineReader final
{
public:
    void append(const QByteArray &bytes);

    /// The next complete line without its terminator; absent when more bytes are needed. The view
    /// is valid until the next call of any operation.
    [[nodiscard]] std::optional<QByteArrayView> next();

    /// What is left behind the last terminator, once the stream has ended; absent when nothing is.
    [[nodiscard]] std::optional<QByteArrayView> rest();

private:
    QByteArray m_buffer;
    qsizetype m_start = 0;      ///< First byte of the current line.
    qsizetype m_scanned = 0;    ///< No terminator stands between m_start and here.
    bool m_afterReturn = false; ///< The last terminator was a CR; an LF now belongs to it.
};

} // namespace velto::chat
