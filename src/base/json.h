// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/anyjson.h"
#include "base/failure.h"
#include "base/jsonvalue.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include <array>
#include <optional>
#include <span>

/// The codec between records and JSON.
///
/// A record lists its fields once, best where it is compiled once:
///
///     struct UserInfo {
///         std::optional<QString> name;
///         static base::json::Fields jsonFields();
///     };
///
///     base::json::Fields UserInfo::jsonFields()
///     {
///         static constexpr std::array fields{base::json::field<&UserInfo::name>("name")};
///         return fields;
///     }
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

class Reader;
class Writer;

/// A field of some record, for who doesn't know the record's type. Made by `field`.
struct Field
{
    QByteArrayView name;
    bool (*read)(Reader &, Value, void *record);
    QJsonValue (*write)(Writer &, const void *record);
};

/// All fields of a record, in the order in which they are read.
using Fields = std::span<const Field>;

/// The field behind a member: `field<&UserInfo::name>("name")`.
template<auto Member>
[[nodiscard]] constexpr Field field(const char *name);

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

    bool read(Value value, QString &out);
    bool read(Value value, bool &out);
    bool read(Value value, int &out);
    bool read(Value value, qint64 &out);
    bool read(Value value, double &out);
    bool read(Value value, AnyJSON &out);
    template<typename T>
    bool read(Value value, QList<T> &out);
    template<typename T>
    bool read(Value value, QMap<QString, T> &out);
    template<typename T>
    bool read(Value value, std::optional<T> &out);
    template<Record T>
    bool read(Value value, T &out)
    {
        return readFields(value, T::jsonFields(), &out);
    }

    [[nodiscard]] DecodingError error() const { return m_error; }

private:
    bool readFields(Value value, Fields fields, void *record);
    bool mismatch(const char *expected, Value found);
    /// Puts `step` before the path of the error that is on its way up. Always false.
    bool below(const QString &step);
    /// The key as fields are named, in `buffer` when it had to be converted.
    [[nodiscard]] QByteArrayView fieldKey(QByteArrayView key, QByteArray &buffer) const;

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
    QJsonValue write(const T &record)
    {
        return writeFields(T::jsonFields(), &record);
    }

    /// Where a value stood that JSON can't express, or absent.
    [[nodiscard]] std::optional<EncodingError> error() const { return m_error; }

private:
    QJsonValue writeFields(Fields fields, const void *record);

    Keys m_keys;
    QString m_path;
    std::optional<EncodingError> m_error;
};

[[nodiscard]] QByteArray compact(const QJsonValue &arrayOrObject);

template<typename T>
[[nodiscard]] Result<T> fromValue(Value value, Keys keys)
{
    Reader reader(keys);
    T out{};
    if (!reader.read(value, out))
        return fail(reader.error());
    return out;
}

/// Into a record that is there already, which holds anything after a failure.
template<typename T>
[[nodiscard]] Result<void> decodeInto(T &out, QByteArrayView text, Keys keys)
{
    const Result<Document> document = Document::parse(text);
    if (!document)
        return tl::unexpected(document.error());
    Reader reader(keys);
    if (!reader.read(document->root(), out))
        return fail(reader.error());
    return {};
}

template<typename T>
[[nodiscard]] Result<T> decode(QByteArrayView text, Keys keys)
{
    T out{};
    Result<void> read = decodeInto(out, text, keys);
    if (!read)
        return tl::unexpected(std::move(read).error());
    return out;
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
bool Reader::read(Value value, QList<T> &out)
{
    if (value.kind() != Kind::List)
        return mismatch("a list", value);
    out.clear();
    out.reserve(value.count());
    return value.forEachElement([&](Value item) {
        T element{};
        if (!read(item, element))
            return below(u'[' + QString::number(out.size()) + u']');
        out.append(std::move(element));
        return true;
    });
}

template<typename T>
bool Reader::read(Value value, QMap<QString, T> &out)
{
    if (value.kind() != Kind::Object)
        return mismatch("an object", value);
    out.clear();
    return value.forEachMember([&](QByteArrayView key, Value member) {
        T element{};
        if (!read(member, element))
            return below(QString::fromUtf8(key));
        out.insert(QString::fromUtf8(key), std::move(element));
        return true;
    });
}

template<typename T>
bool Reader::read(Value value, std::optional<T> &out)
{
    out.reset();
    const Kind kind = value.kind();
    if (kind == Kind::Nothing || kind == Kind::Null)
        return true;
    return read(value, out.emplace());
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

namespace detail
{
template<typename Record, typename T>
Record recordOf(T Record::*);
} // namespace detail

template<auto Member>
constexpr Field field(const char *name)
{
    using Record = decltype(detail::recordOf(Member));
    return {name,
            [](Reader &reader, Value value, void *record) {
                return reader.read(value, static_cast<Record *>(record)->*Member);
            },
            [](Writer &writer, const void *record) {
                return writer.write(static_cast<const Record *>(record)->*Member);
            }};
}

} // namespace velto::base::json
