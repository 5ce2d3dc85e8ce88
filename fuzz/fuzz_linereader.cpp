// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/linereader.h"

#include <QList>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using velto::chat::LineReader;

namespace
{

QList<QByteArray> lines(const QByteArray &bytes, qsizetype step)
{
    LineReader reader;
    QList<QByteArray> found;
    for (qsizetype at = 0; at < bytes.size(); at += step) {
        reader.append(bytes.mid(at, step));
        while (const auto line = reader.next())
            found.append(line->toByteArray());
    }
    if (const auto line = reader.rest())
        found.append(line->toByteArray());
    return found;
}

} // namespace

/// The first byte is the size of the pieces; the lines are the same as those of the whole.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 2)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data + 1),
                           static_cast<qsizetype>(size - 1));
    if (lines(bytes, 1 + data[0]) != lines(bytes, bytes.size()))
        std::abort();
    return 0;
}
