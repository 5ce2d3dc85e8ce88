// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/jsonvalue.h"

#include <simdjson.h>

#include <algorithm>
#include <bit>
#include <cmath>

namespace velto::base::json
{
namespace
{

namespace dom = simdjson::dom;

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
    const char *bytes = text.isEmpty() ? "" : text.data(); // it copies even nothing
    return sharedParser().parse(bytes, static_cast<std::size_t>(text.size()));
}

// A dom::element is a reference into a tape and a position on it; Value carries just these two.
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

} // namespace velto::base::json
