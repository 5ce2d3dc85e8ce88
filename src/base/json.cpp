// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/json.h"

#include <QJsonDocument>

#include <simdjson.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace velto::base::json
{
namespace
{

namespace dom = simdjson::dom;

QString nameOf(Kind kind)
{
    switch (kind) {
    case Kind::Null:
        return QStringLiteral("null");
    case Kind::Bool:
        return QStringLiteral("a truth value");
    case Kind::Number:
        return QStringLiteral("a number");
    case Kind::Text:
        return QStringLiteral("text");
    case Kind::List:
        return QStringLiteral("a list");
    case Kind::Object:
        return QStringLiteral("an object");
    case Kind::Nothing:
        break;
    }
    return QStringLiteral("nothing");
}

/// The parser with the memory of its last document. One a thread, since documents never outlive the
/// call that decodes them.
dom::parser &sharedParser()
{
    thread_local dom::parser parser;
    return parser;
}

QString textFrom(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// Whole numbers beyond 64 bits are valid JSON but not to the parser, which takes them with a
/// fraction.
QByteArray withLongNumbersAsFloats(QByteArrayView text)
{
    constexpr qsizetype longestSafe = 18; // digits that fit 64 bits, whatever they are
    QByteArray rewritten;
    bool inText = false;
    for (qsizetype at = 0; at < text.size();) {
        const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
        const auto end = std::find_if_not(text.begin() + at, text.end(), isDigit) - text.begin();
        const bool goesOn = end < text.size() && QByteArrayView(".eE").contains(text[end]);
        const bool isFraction = at > 0 && QByteArrayView(".eE+").contains(text[at - 1]);
        rewritten += text.sliced(at, end - at);
        if (!inText && end - at > longestSafe && !goesOn && !isFraction)
            rewritten += ".0";
        if (end < text.size()) {
            const qsizetype step = inText && text[end] == '\\' && end + 1 < text.size() ? 2 : 1;
            inText ^= text[end] == '"';
            rewritten += text.sliced(end, step);
            at = end + step;
        } else {
            at = end;
        }
    }
    return rewritten;
}

bool isRefusedNumber(simdjson::error_code error)
{
    return error == simdjson::NUMBER_ERROR || error == simdjson::NUMBER_OUT_OF_RANGE;
}

simdjson::simdjson_result<dom::element> parsed(QByteArrayView text)
{
    return sharedParser().parse(text.data(), static_cast<std::size_t>(text.size()));
}

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

// A dom::element is a reference into a tape and a position on it; Value carries just these two.
namespace
{
static_assert(sizeof(dom::element) == sizeof(Value) && std::is_trivially_copyable_v<dom::element>);

dom::element elementOf(const Value &value)
{
    return std::bit_cast<dom::element>(value);
}

Value valueOf(const dom::element &element)
{
    return std::bit_cast<Value>(element);
}
} // namespace

Kind Value::kind() const
{
    if (m_tape == nullptr)
        return Kind::Nothing;
    switch (elementOf(*this).type()) {
    case dom::element_type::ARRAY:
        return Kind::List;
    case dom::element_type::OBJECT:
        return Kind::Object;
    case dom::element_type::INT64:
    case dom::element_type::UINT64:
    case dom::element_type::DOUBLE:
        return Kind::Number;
    case dom::element_type::STRING:
        return Kind::Text;
    case dom::element_type::BOOL:
        return Kind::Bool;
    case dom::element_type::NULL_VALUE:
        break;
    }
    return Kind::Null;
}

bool Value::get(bool &out) const
{
    return m_tape != nullptr && elementOf(*this).get(out) == simdjson::SUCCESS;
}

bool Value::get(double &out) const
{
    return m_tape != nullptr && elementOf(*this).get(out) == simdjson::SUCCESS;
}

bool Value::get(QString &out) const
{
    std::string_view utf8;
    if (m_tape == nullptr || elementOf(*this).get(utf8) != simdjson::SUCCESS)
        return false;
    out = textFrom(utf8);
    return true;
}

bool Value::get(qint64 &out) const
{
    std::int64_t whole = 0;
    if (m_tape != nullptr && elementOf(*this).get(whole) == simdjson::SUCCESS) {
        out = whole;
        return true;
    }
    // 3.0 is a whole number too. Beyond 2^53 a double no longer says which one it is.
    constexpr double exact = 9007199254740992.0;
    double number = 0;
    if (!get(number) || std::trunc(number) != number || std::abs(number) > exact)
        return false;
    out = static_cast<qint64>(number);
    return true;
}

bool Value::visitElements(bool (*visit)(void *, Value), void *context) const
{
    if (kind() != Kind::List)
        return true;
    for (const dom::element element : dom::array(elementOf(*this))) {
        if (!visit(context, valueOf(element)))
            return false;
    }
    return true;
}

bool Value::visitMembers(bool (*visit)(void *, QByteArrayView, Value), void *context) const
{
    if (kind() != Kind::Object)
        return true;
    for (const dom::key_value_pair member : dom::object(elementOf(*this))) {
        const QByteArrayView key(member.key.data(), static_cast<qsizetype>(member.key.size()));
        if (!visit(context, key, valueOf(member.value)))
            return false;
    }
    return true;
}

qsizetype Value::count() const
{
    switch (kind()) {
    case Kind::List:
        return static_cast<qsizetype>(dom::array(elementOf(*this)).size());
    case Kind::Object:
        return static_cast<qsizetype>(dom::object(elementOf(*this)).size());
    default:
        return 0;
    }
}

Result<Document> Document::parse(QByteArrayView text)
{
    auto root = parsed(text);
    if (isRefusedNumber(root.error()))
        root = parsed(withLongNumbersAsFloats(text));
    QString found;
    if (root.error() != simdjson::SUCCESS)
        found = QLatin1StringView(simdjson::error_message(root.error()));
    else if (!root.is_array() && !root.is_object())
        found = nameOf(std::bit_cast<Value>(root.value_unsafe()).kind());
    if (!found.isEmpty())
        return fail(DecodingError{{}, QStringLiteral("JSON"), found});
    Document document;
    document.m_root = valueOf(root.value_unsafe());
    return document;
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

QByteArray compact(const QJsonValue &arrayOrObject)
{
    const QJsonDocument document = arrayOrObject.isArray()
                                       ? QJsonDocument(arrayOrObject.toArray())
                                       : QJsonDocument(arrayOrObject.toObject());
    return document.toJson(QJsonDocument::Compact);
}

} // namespace velto::base::json
