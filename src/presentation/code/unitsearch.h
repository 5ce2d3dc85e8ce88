// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

#include <bit>
#include <cstring>

namespace velto::presentation
{

/// Eight UTF-16 units, which compilers compare at once where the processor can.
using UnitLanes = quint16 __attribute__((vector_size(16)));
using ByteLanes = qint8 __attribute__((vector_size(8)));

/// The first position from `at` on, before `end`, that `matches`, or `end`. `matches` gets either
/// one unit or `UnitLanes`, so it combines comparisons with "&" and "|" and has no branches.
template<typename Matches>
[[nodiscard]] qsizetype findUnit(QStringView text, qsizetype at, qsizetype end, Matches matches)
{
    const char16_t *units = text.utf16();
#ifndef __clang_analyzer__ // the linter's compiler crashes on lanes in a generic lambda
    constexpr qsizetype lanes = 8;
    for (; at + lanes <= end; at += lanes) {
        UnitLanes eight;
        std::memcpy(&eight, units + at, sizeof eight);
        const auto found = __builtin_convertvector(matches(eight), ByteLanes);
        quint64 bytes = 0;
        std::memcpy(&bytes, &found, sizeof bytes);
        if (bytes == 0)
            continue;
        return at + (std::endian::native == std::endian::little ? std::countr_zero(bytes)
                                                                : std::countl_zero(bytes)) /
                        8;
    }
#endif
    while (at < end && !matches(units[at]))
        ++at;
    return at;
}

} // namespace velto::presentation
