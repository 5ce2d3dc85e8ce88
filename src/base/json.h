// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/anyjson.h"
#include "base/failure.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include <optional>
#include <tuple>

/// The codec between records and JSON.
///
/// A record lists its fields once:
///
///     struct UserInfo {
///         std::optional<QString> name;
///         static constexpr auto jsonFields() { return std::tuple{json::field("name",
///         &UserInfo::name)}; }
///     };
///
/// and can then be read and written in either key form. A `std::optional` member may be absent or
/// null; every other member is required. Keys that no field names are ignored.
namespace velto::base::json
{

enum class Keys {
    Plain, ///< The field's name, to the letter.
    /// Read: a key with underscores is turned into camel case first, so both "user_id" and "userId"
    /// reach the field "userId". Written: in snake case.
    Snake,
};

template<typename Record, typename T>
struct Field
{
    const char *name;
    T Record::*member;
};

template<typename Record, typename T>
[[nodiscard]] constexpr Field<Record, T> field(const char *name, T Record::*member)
{
    return {name, member};
}

template<typename T>
concept Record = requires
{
    T::jsonFields();
};

/// "user_id" -> "userId"; underscores at either end stay, a key without any stays as it is.
[[nodiscard]] QString fromSnakeCase(const QString &key);
/// "workspaceId" -> "workspace_id", "someURLText" -> "some_url_text".
[[nodiscard]] QString toSnakeCase(const QString &key);

/// Carries the key form down a value and the error up.
class Reader final
{
public:
    explicit Reader(Keys keys)
        : m_keys(keys)
    {}

    bool read(const QJsonValue &value, QString &out);
    bool read(const QJsonValue &value, bool &out);
    bool read(const QJsonValue &value, int &out);
    bool read(const QJsonValue &value, qint64 &out);
    bool read(const QJsonValue &value, double &out);
    bool read(const QJsonValue &value, AnyJSON &out);
    template<typename T>
    bool read(const QJsonValue &value, QList<T> &out);
    template<typename T>
    bool read(const QJsonValue &value, QMap<QString, T> &out);
    template<typename T>
    bool read(const QJsonValue &value, std::optional<T> &out);
    template<Record T>
    bool read(const QJsonValue &value, T &out);

    [[nodiscard]] DecodingError error() const { return m_error; }

private:
    bool mismatch(const QString &expected, const QJsonValue &found);
    /// Puts `step` before the path of the error that is on its way up. Always false.
    bool below(const QString &step);
    [[nodiscard]] QJsonObject withFieldKeys(const QJsonObject &object) const;

    Keys m_keys;
    DecodingError m_error;
};

class Writer final
{
public:
    explicit Writer(Keys keys)
        : m_keys(keys)
    {}

    QJsonValue write(const QString &value) { return value; }
    QJsonValue write(bool value) { return value; }
    QJsonValue write(int value) { return value; }
    QJsonValue write(qint64 value) { return value; }
    QJsonValue write(double value);
    QJsonValue write(const AnyJSON &value);
    template<typename T>
    QJsonValue write(const QList<T> &values);
    template<typename T>
    QJsonValue write(const QMap<QString, T> &values);
    template<typename T>
    QJsonValue write(const std::optional<T> &value);
    template<Record T>
    QJsonValue write(const T &record);

    /// Where a value stood that JSON can't express, or absent.
    [[nodiscard]] std::optional<EncodingError> error() const { return m_error; }

private:
    QJsonValue writeField(const char *name, const auto &value);

    Keys m_keys;
    QString m_path;
    std::optional<EncodingError> m_error;
};

/// A whole JSON document, whose top must be an array or an object.
[[nodiscard]] Result<QJsonValue> parse(const QByteArray &document);
[[nodiscard]] QByteArray compact(const QJsonValue &arrayOrObject);

template<typename T>
[[nodiscard]] Result<T> fromValue(const QJsonValue &value, Keys keys)
{
    Reader reader(keys);
    T out{};
    if (!reader.read(value, out))
        return fail(reader.error());
    return out;
}

template<typename T>
[[nodiscard]] Result<T> decode(const QByteArray &document, Keys keys)
{
    const Result<QJsonValue> value = parse(document);
    if (!value)
        return tl::unexpected(value.error());
    return fromValue<T>(*value, keys);
}

template<typename T>
[[nodiscard]] Result<QByteArray> encode(const T &value, Keys keys)
{
    Writer writer(keys);
    const QJsonValue written = writer.write(value);
    if (writer.error())
        return fail(*writer.error());
    return compact(written);
}

// ---------------------------------------------------------------------------------------------

template<typename T>
bool Reader::read(const QJsonValue &value, QList<T> &out)
{
    if (!value.isArray())
        return mismatch(QStringLiteral("a list"), value);
    const QJsonArray array = value.toArray();
    out.clear();
    out.reserve(array.size());
    for (qsizetype i = 0; i < array.size(); ++i) {
        T element{};
        if (!read(array.at(i), element))
            return below(u'[' + QString::number(i) + u']');
        out.append(std::move(element));
    }
    return true;
}

template<typename T>
bool Reader::read(const QJsonValue &value, QMap<QString, T> &out)
{
    if (!value.isObject())
        return mismatch(QStringLiteral("an object"), value);
    const QJsonObject object = value.toObject();
    out.clear();
    for (auto it = object.begin(); it != object.end(); ++it) {
        T element{};
        if (!read(it.value(), element))
            return below(it.key());
        out.insert(it.key(), std::move(element));
    }
    return true;
}

template<typename T>
bool Reader::read(const QJsonValue &value, std::optional<T> &out)
{
    out.reset();
    if (value.isUndefined() || value.isNull())
        return true;
    T element{};
    if (!read(value, element))
        return false;
    out = std::move(element);
    return true;
}

template<Record T>
bool Reader::read(const QJsonValue &value, T &out)
{
    if (!value.isObject())
        return mismatch(QStringLiteral("an object"), value);
    const QJsonObject object = withFieldKeys(value.toObject());
    const auto readField = [&](const auto &field) {
        const QLatin1StringView name(field.name);
        return read(object.value(name), out.*field.member) || below(name);
    };
    return std::apply([&](const auto &...fields) { return (readField(fields) && ...); },
                      T::jsonFields());
}

template<typename T>
QJsonValue Writer::write(const QList<T> &values)
{
    QJsonArray array;
    for (const T &value : values)
        array.append(write(value));
    return array;
}

template<typename T>
QJsonValue Writer::write(const QMap<QString, T> &values)
{
    QJsonObject object;
    for (auto it = values.begin(); it != values.end(); ++it)
        object.insert(it.key(), write(it.value()));
    return object;
}

template<typename T>
QJsonValue Writer::write(const std::optional<T> &value)
{
    return value ? write(*value) : QJsonValue(QJsonValue::Undefined);
}

inline QJsonValue Writer::writeField(const char *name, const auto &value)
{
    m_path = QLatin1StringView(name);
    return write(value);
}

template<Record T>
QJsonValue Writer::write(const T &record)
{
    QJsonObject object;
    const auto writeOne = [&](const auto &field) {
        const QLatin1StringView name(field.name);
        const QJsonValue value = writeField(field.name, record.*field.member);
        if (!value.isUndefined())
            object.insert(m_keys == Keys::Snake ? toSnakeCase(name) : QString(name), value);
    };
    std::apply([&](const auto &...fields) { (writeOne(fields), ...); }, T::jsonFields());
    return object;
}

} // namespace velto::base::json
