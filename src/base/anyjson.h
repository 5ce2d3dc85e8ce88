// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include <optional>
#include <variant>

class QJsonValue;

namespace velto::base
{

/// Free-form JSON, as the service sends it for tool inputs and outputs. A plain value.
class AnyJSON final
{
public:
    using Array = QList<AnyJSON>;
    using Object = QMap<QString, AnyJSON>;
    using Value = std::variant<std::nullptr_t, bool, double, QString, Array, Object>;

    AnyJSON() = default;
    AnyJSON(Value value)
        : m_value(std::move(value))
    {}

    [[nodiscard]] const Value &value() const { return m_value; }

    /// The same tree as Qt's JSON writer takes it.
    [[nodiscard]] QJsonValue foundationValue() const;

    /// False when an infinite number hides somewhere inside, which JSON can't express.
    [[nodiscard]] bool isWritable() const;

    /// The display form of tool payloads: a text as it is, arrays and objects as indented JSON with
    /// sorted keys, and the empty text for a number, a truth value or null, none of which is a
    /// JSON document of its own for the writer.
    [[nodiscard]] QString prettyString() const;

    friend bool operator==(const AnyJSON &a, const AnyJSON &b) { return a.m_value == b.m_value; }

private:
    Value m_value = nullptr;
};

/// The display form of a payload that may be missing, which shows as nothing.
[[nodiscard]] QString prettyString(const std::optional<AnyJSON> &json);

} // namespace velto::base
