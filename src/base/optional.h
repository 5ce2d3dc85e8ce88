// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QVariant>

#include <concepts>
#include <optional>

namespace velto::base
{

/// A std::optional that a property of type QVariant can show to QML: `undefined` when absent.
template<typename T>
class Optional final : public std::optional<T>
{
    using Plain = std::optional<T>;

public:
    using Plain::Plain;
    Optional(Plain value)
        : Plain(std::move(value))
    {}

    operator QVariant() const { return *this ? QVariant::fromValue(**this) : QVariant(); }

    [[nodiscard]] const Plain &plain() const { return *this; }

    // For a type that converts to it, the comparisons of std::optional are ambiguous or, worse,
    // take the other one for a value.
    friend bool operator==(const Optional &a, const Optional &b) { return a.plain() == b.plain(); }
    friend bool operator==(const Optional &a, const Plain &b) { return a.plain() == b; }
    template<typename U>
    requires(!std::derived_from<U, Plain>) friend bool operator==(const Optional &a, const U &b)
    {
        return a.plain() == b;
    }
};

} // namespace velto::base
