// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/json.h"

#include <QJsonDocument>

#include <cmath>
#include <limits>

namespace velto::base::json
{
namespace
{

QString nameOf(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Null:
        return QStringLiteral("null");
    case QJsonValue::Bool:
        return QStringLiteral("a truth value");
    case QJsonValue::Double:
        return QStringLiteral("a number");
    case QJsonValue::String:
        return QStringLiteral("text");
    case QJsonValue::Array:
        return QStringLiteral("a list");
    case QJsonValue::Object:
        return QStringLiteral("an object");
    case QJsonValue::Undefined:
        break;
    }
    return QStringLiteral("nothing");
}

// Doubles above 2^53 are whole but no longer exact; such a number is not one that we can carry.
bool wholeNumber(const QJsonValue &value, qint64 &out)
{
    constexpr qint64 missing = std::numeric_limits<qint64>::min();
    out = value.isDouble() ? value.toInteger(missing) : missing;
    return out != missing;
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

bool Reader::mismatch(const QString &expected, const QJsonValue &found)
{
    m_error = {{}, expected, nameOf(found)};
    return false;
}

bool Reader::below(const QString &step)
{
    const bool joins = !m_error.path.isEmpty() && !m_error.path.startsWith(u'[');
    m_error.path = joins ? step + u'.' + m_error.path : step + m_error.path;
    return false;
}

QJsonObject Reader::withFieldKeys(const QJsonObject &object) const
{
    if (m_keys == Keys::Plain)
        return object;
    QJsonObject converted;
    for (auto it = object.begin(); it != object.end(); ++it)
        converted.insert(fromSnakeCase(it.key()), it.value());
    return converted;
}

bool Reader::read(const QJsonValue &value, QString &out)
{
    if (!value.isString())
        return mismatch(QStringLiteral("text"), value);
    out = value.toString();
    return true;
}

bool Reader::read(const QJsonValue &value, bool &out)
{
    if (!value.isBool())
        return mismatch(QStringLiteral("a truth value"), value);
    out = value.toBool();
    return true;
}

bool Reader::read(const QJsonValue &value, qint64 &out)
{
    return wholeNumber(value, out) || mismatch(QStringLiteral("a whole number"), value);
}

bool Reader::read(const QJsonValue &value, int &out)
{
    qint64 wide = 0;
    if (!wholeNumber(value, wide) || wide < std::numeric_limits<int>::min() ||
        wide > std::numeric_limits<int>::max())
        return mismatch(QStringLiteral("a whole number"), value);
    out = static_cast<int>(wide);
    return true;
}

bool Reader::read(const QJsonValue &value, double &out)
{
    if (!value.isDouble())
        return mismatch(QStringLiteral("a number"), value);
    out = value.toDouble();
    return true;
}

bool Reader::read(const QJsonValue &value, AnyJSON &out)
{
    std::optional<AnyJSON> any = AnyJSON::fromFoundation(value);
    if (!any)
        return mismatch(QStringLiteral("any value (unknown JSON)"), value);
    out = std::move(*any);
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

Result<QJsonValue> parse(const QByteArray &document)
{
    QJsonParseError error;
    const QJsonDocument parsed = QJsonDocument::fromJson(document, &error);
    if (error.error != QJsonParseError::NoError) {
        const QString found = QStringLiteral("%1 (at byte %2)")
                                  .arg(error.errorString(), QString::number(error.offset));
        return fail(DecodingError{{}, QStringLiteral("JSON"), found});
    }
    return parsed.isArray() ? QJsonValue(parsed.array()) : QJsonValue(parsed.object());
}

QByteArray compact(const QJsonValue &arrayOrObject)
{
    const QJsonDocument document = arrayOrObject.isArray()
                                       ? QJsonDocument(arrayOrObject.toArray())
                                       : QJsonDocument(arrayOrObject.toObject());
    return document.toJson(QJsonDocument::Compact);
}

} // namespace velto::base::json
