// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/json.h"

#include <QJsonDocument>
#include <QVarLengthArray>

#include <algorithm>
#include <cmath>
#include <limits>

namespace velto::base::json
{
namespace
{

AnyJSON anyFrom(Value value)
{
    switch (value.kind()) {
    case Kind::Bool: {
        bool truth = false;
        Q_UNUSED(value.get(truth))
        return AnyJSON(truth);
    }
    case Kind::Number: {
        double number = 0;
        Q_UNUSED(value.get(number))
        return AnyJSON(number);
    }
    case Kind::Text: {
        QString text;
        Q_UNUSED(value.get(text))
        return AnyJSON(std::move(text));
    }
    case Kind::List: {
        AnyJSON::Array list;
        value.forEachElement([&](Value element) { return list.append(anyFrom(element)), true; });
        return AnyJSON(std::move(list));
    }
    case Kind::Object: {
        AnyJSON::Object object;
        value.forEachMember([&](QByteArrayView key, Value member) {
            return object.insert(QString::fromUtf8(key), anyFrom(member)), true;
        });
        return AnyJSON(std::move(object));
    }
    case Kind::Null:
    case Kind::Nothing:
        break;
    }
    return {};
}

} // namespace

QString fromSnakeCase(const QString &key)
{
    const auto isUnderscore = [](QChar c) { return c == u'_'; };
    const auto first = std::find_if_not(key.begin(), key.end(), isUnderscore);
    if (first == key.end())
        return key;
    const auto last = std::find_if_not(key.rbegin(), key.rend(), isUnderscore).base();
    const QString middle(first, last - first);
    if (!middle.contains(u'_'))
        return key;
    const QStringList words = middle.split(u'_', Qt::SkipEmptyParts);
    QString joined = words.first().toLower();
    for (qsizetype i = 1; i < words.size(); ++i)
        joined += words[i].left(1).toUpper() + words[i].mid(1).toLower();
    return key.left(first - key.begin()) + joined + key.right(key.end() - last);
}

QString toSnakeCase(const QString &key)
{
    QString snake;
    for (qsizetype i = 0; i < key.size(); ++i) {
        const bool startsWord =
            key[i].isUpper() && i > 0 &&
            (!key[i - 1].isUpper() || (i + 1 < key.size() && key[i + 1].isLower()));
        if (startsWord && key[i - 1] != u'_')
            snake += u'_';
        snake += key[i].toLower();
    }
    return snake;
}

bool Reader::mismatch(const char *expected, Value found)
{
    m_error = {{}, QLatin1StringView(expected), nameOf(found.kind())};
    return false;
}

bool Reader::below(const QString &step)
{
    const bool joins = !m_error.path.isEmpty() && !m_error.path.startsWith(u'[');
    m_error.path = joins ? step + u'.' + m_error.path : step + m_error.path;
    return false;
}

QByteArrayView Reader::fieldKey(QByteArrayView key, QByteArray &buffer) const
{
    if (m_keys == Keys::Plain || !key.contains('_'))
        return key;
    buffer = fromSnakeCase(QString::fromUtf8(key)).toUtf8();
    return buffer;
}

bool Reader::readFields(Value value, Fields fields, void *record)
{
    if (value.kind() != Kind::Object)
        return mismatch("an object", value);
    QVarLengthArray<Value, 32> found(static_cast<qsizetype>(fields.size()));
    QByteArray buffer;
    value.forEachMember([&](QByteArrayView key, Value member) {
        const auto field = std::ranges::find(fields, fieldKey(key, buffer), &Field::name);
        if (field != fields.end())
            found[field - fields.begin()] = member;
        return true;
    });
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (!fields[i].read(*this, found[static_cast<qsizetype>(i)], record))
            return below(QString::fromLatin1(fields[i].name));
    }
    return true;
}

bool Reader::read(Value value, QString &out)
{
    return value.get(out) || mismatch("text", value);
}

bool Reader::read(Value value, bool &out)
{
    return value.get(out) || mismatch("a truth value", value);
}

bool Reader::read(Value value, qint64 &out)
{
    return value.get(out) || mismatch("a whole number", value);
}

bool Reader::read(Value value, int &out)
{
    qint64 wide = 0;
    if (!value.get(wide) || wide < std::numeric_limits<int>::min() ||
        wide > std::numeric_limits<int>::max())
        return mismatch("a whole number", value);
    out = static_cast<int>(wide);
    return true;
}

bool Reader::read(Value value, double &out)
{
    return value.get(out) || mismatch("a number", value);
}

bool Reader::read(Value value, AnyJSON &out)
{
    if (value.kind() == Kind::Nothing)
        return mismatch("any value (unknown JSON)", value);
    out = anyFrom(value);
    return true;
}

QJsonValue Writer::write(double value)
{
    if (!std::isfinite(value))
        m_error = EncodingError{m_path};
    return value;
}

QJsonValue Writer::write(const AnyJSON &value)
{
    if (!value.isWritable())
        m_error = EncodingError{m_path};
    return value.foundationValue();
}

QJsonValue Writer::writeFields(Fields fields, const void *record)
{
    QJsonObject object;
    for (const Field &field : fields) {
        const QString name = QString::fromLatin1(field.name);
        m_path = name;
        const QJsonValue value = field.write(*this, record);
        if (!value.isUndefined())
            object.insert(m_keys == Keys::Snake ? toSnakeCase(name) : name, value);
    }
    return object;
}

QByteArray compact(const QJsonValue &arrayOrObject)
{
    const QJsonDocument document = arrayOrObject.isArray()
                                       ? QJsonDocument(arrayOrObject.toArray())
                                       : QJsonDocument(arrayOrObject.toObject());
    return document.toJson(QJsonDocument::Compact);
}

} // namespace velto::base::json
