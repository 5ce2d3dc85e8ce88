// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What velto and `velto-keyring` say to each other: one request, one reply. A message is the
/// length of its rest in four bytes, the most significant first, and that rest, a map in CBOR.
/// Texts go as UTF-8. All functions are pure.
namespace velto::platform
{

/// In bytes, with those of the length. Far more than any token has, and little for a program that
/// holds all of it.
inline constexpr qsizetype longestSecretMessage = 1 << 20;

struct SecretRequest
{
    enum class Operation { Save, Load, Remove };
    Operation operation = Operation::Load;
    QString service;
    QString account;
    QString value; ///< Only for `Save`; may be empty.
    bool operator==(const SecretRequest &) const = default;
};

struct SecretReply
{
    qint32 status = 0;            ///< 0, or that of the `KeychainError`.
    std::optional<QString> value; ///< Of a `Load` that found something.
    bool operator==(const SecretReply &) const = default;
};

/// Absent when the message would be longer than one may be.
[[nodiscard]] std::optional<QByteArray> messageOf(const SecretRequest &request);
[[nodiscard]] std::optional<QByteArray> messageOf(const SecretReply &reply);

enum class MessageState {
    Incomplete, ///< The beginning of a message, at most.
    Complete,   ///< As long as a message says it is.
    Broken,     ///< Nothing that could follow would make a message of it.
};
/// Tells by the length alone.
[[nodiscard]] MessageState messageState(QByteArrayView received);

/// Absent when it isn't one, from its first byte to its last.
[[nodiscard]] std::optional<SecretRequest> secretRequest(QByteArrayView message);
[[nodiscard]] std::optional<SecretReply> secretReply(QByteArrayView message);

} // namespace velto::platform
