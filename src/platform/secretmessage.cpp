// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/secretmessage.h"

#include "base/text.h"

#include <QCborMap>
#include <QCborValue>
#include <QtEndian>

#include <array>
#include <limits>

namespace velto::platform
{
namespace
{

using Operation = SecretRequest::Operation;

constexpr qsizetype lengthSize = sizeof(quint32);

constexpr QLatin1StringView operationKey{"operation"};
constexpr QLatin1StringView serviceKey{"service"};
constexpr QLatin1StringView accountKey{"account"};
constexpr QLatin1StringView valueKey{"value"};
constexpr QLatin1StringView statusKey{"status"};

struct OperationName
{
    Operation operation;
    QLatin1StringView name;
};
constexpr std::array operationNames{OperationName{Operation::Save, QLatin1StringView("save")},
                                    OperationName{Operation::Load, QLatin1StringView("load")},
                                    OperationName{Operation::Remove, QLatin1StringView("remove")}};

QLatin1StringView nameOf(Operation operation)
{
    for (const OperationName &entry : operationNames) {
        if (entry.operation == operation)
            return entry.name;
    }
    return {};
}

std::optional<Operation> operationNamed(const QString &name)
{
    for (const OperationName &entry : operationNames) {
        if (name == entry.name)
            return entry.operation;
    }
    return std::nullopt;
}

std::optional<QByteArray> framed(const QCborMap &map)
{
    const QByteArray body = map.toCborValue().toCbor();
    if (body.size() > longestSecretMessage - lengthSize)
        return std::nullopt;
    QByteArray message(lengthSize, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(body.size()), message.data());
    return message + body;
}

std::optional<QCborMap> unframed(QByteArrayView message)
{
    if (messageState(message) != MessageState::Complete)
        return std::nullopt;
    const QByteArray body = message.sliced(lengthSize).toByteArray();
    QCborParserError error;
    const QCborValue value = QCborValue::fromCbor(body, &error);
    if (error.error != QCborError::NoError || error.offset != body.size() || !value.isMap())
        return std::nullopt;
    return value.toMap();
}

// As bytes: text of CBOR would lose a byte order mark.
QCborValue bytes(const QString &text)
{
    return text.toUtf8();
}

std::optional<QString> text(const QCborMap &map, QLatin1StringView key)
{
    const QCborValue value = map.value(key);
    return value.isByteArray() ? base::utf8Text(value.toByteArray()) : std::nullopt;
}

} // namespace

std::optional<QByteArray> messageOf(const SecretRequest &request)
{
    QCborMap map{{operationKey, nameOf(request.operation)},
                 {serviceKey, bytes(request.service)},
                 {accountKey, bytes(request.account)}};
    if (request.operation == Operation::Save)
        map.insert(valueKey, bytes(request.value));
    return framed(map);
}

std::optional<QByteArray> messageOf(const SecretReply &reply)
{
    QCborMap map{{statusKey, reply.status}};
    if (reply.value)
        map.insert(valueKey, bytes(*reply.value));
    return framed(map);
}

MessageState messageState(QByteArrayView received)
{
    if (received.size() < lengthSize)
        return MessageState::Incomplete;
    const qint64 size = lengthSize + qint64(qFromBigEndian<quint32>(received.data()));
    if (size > longestSecretMessage || received.size() > size)
        return MessageState::Broken;
    return received.size() < size ? MessageState::Incomplete : MessageState::Complete;
}

std::optional<SecretRequest> secretRequest(QByteArrayView message)
{
    const std::optional<QCborMap> map = unframed(message);
    if (!map)
        return std::nullopt;
    const auto operation = operationNamed(map->value(operationKey).toString());
    const auto service = text(*map, serviceKey);
    const auto account = text(*map, accountKey);
    if (!operation || !service || !account)
        return std::nullopt;
    SecretRequest request{*operation, *service, *account, {}};
    if (*operation != Operation::Save)
        return request;
    const auto value = text(*map, valueKey);
    if (!value)
        return std::nullopt;
    request.value = *value;
    return request;
}

std::optional<SecretReply> secretReply(QByteArrayView message)
{
    using Limits = std::numeric_limits<qint32>;
    const std::optional<QCborMap> map = unframed(message);
    if (!map)
        return std::nullopt;
    const QCborValue status = map->value(statusKey);
    const qint64 number = status.toInteger();
    if (!status.isInteger() || number < Limits::min() || number > Limits::max())
        return std::nullopt;
    SecretReply reply{static_cast<qint32>(number), {}};
    if (!map->contains(valueKey))
        return reply;
    reply.value = text(*map, valueKey);
    return reply.value ? std::optional(reply) : std::nullopt;
}

} // namespace velto::platform
