// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/anyjson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace velto::base
{
namespace
{

struct ToFoundation
{
    QJsonValue operator()(std::nullptr_t) const { return QJsonValue::Null; }
    QJsonValue operator()(bool value) const { return value; }
    QJsonValue operator()(double value) const { return value; }
    QJsonValue operator()(const QString &value) const { return value; }
    QJsonValue operator()(const AnyJSON::Array &values) const
    {
        QJsonArray array;
        for (const AnyJSON &value : values)
            array.append(value.foundationValue());
        return array;
    }
    QJsonValue operator()(const AnyJSON::Object &values) const
    {
        QJsonObject object;
        for (auto it = values.begin(); it != values.end(); ++it)
            object.insert(it.key(), it.value().foundationValue());
        return object;
    }
};

// JSON has no infinite numbers; the writer would put null in their place without a word.
struct IsWritable
{
    bool operator()(double value) const { return std::isfinite(value); }
    bool operator()(const AnyJSON::Array &values) const
    {
        return std::ranges::all_of(
            values, [this](const AnyJSON &value) { return std::visit(*this, value.value()); });
    }
    bool operator()(const AnyJSON::Object &values) const
    {
        return std::ranges::all_of(
            values, [this](const AnyJSON &value) { return std::visit(*this, value.value()); });
    }
    bool operator()(const auto &) const { return true; }
};

QString written(const QJsonDocument &document)
{
    return QString::fromUtf8(document.toJson(QJsonDocument::Indented)).trimmed();
}

} // namespace

QJsonValue AnyJSON::foundationValue() const
{
    return std::visit(ToFoundation(), m_value);
}

bool AnyJSON::isWritable() const
{
    return std::visit(IsWritable(), m_value);
}

QString AnyJSON::prettyString() const
{
    if (const auto *text = std::get_if<QString>(&m_value))
        return *text;
    if (!isWritable())
        return {};
    if (std::holds_alternative<Array>(m_value))
        return written(QJsonDocument(foundationValue().toArray()));
    if (std::holds_alternative<Object>(m_value))
        return written(QJsonDocument(foundationValue().toObject()));
    return {};
}

QString prettyString(const std::optional<AnyJSON> &json)
{
    return json ? json->prettyString() : QString();
}

} // namespace velto::base
