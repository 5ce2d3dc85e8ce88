// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <tl/expected.hpp>

#include <variant>

/// Every way in which an operation of velto can fail, as one closed sum of typed values.
///
/// Screens show `description(failure)` as it stands, so each text is a sentence for a user.

namespace velto::base
{

/// A REST answer outside 200 to 299. `body` is the answer's text, or "<no body>".
struct APIError
{
    int status = 0;
    QString body;
    bool operator==(const APIError &) const = default;
};

/// A chat request that the service did not answer with 200.
struct ChatHTTPError
{
    int status = 0;
    QString body;
    bool operator==(const ChatHTTPError &) const = default;
};

struct AuthError
{
    enum class Kind { Server, UserCancelled, MissingCode, StateMismatch, SessionExpired };
    Kind kind = Kind::Server;
    QString text; ///< The authorization server's words; only for `Server`.
    bool operator==(const AuthError &) const = default;
};

struct LoopbackError
{
    enum class Kind { NoPort, TimedOut };
    Kind kind = Kind::NoPort;
    bool operator==(const LoopbackError &) const = default;
};

/// The secure store refused to keep a secret. `status` is the store's own number for the reason.
struct KeychainError
{
    /// Numbers of our own beside those of the store, for what it can't number itself.
    enum Status : qint32 { Unknown = -1, NoService = -25291, Locked = -25308 };
    qint32 status = Unknown;
    bool operator==(const KeychainError &) const = default;
};

/// What went wrong between us and an HTTP server, below the level of a status code.
struct TransportError
{
    enum class Kind {
        BadURL,
        BadServerResponse, ///< Not HTTP, or not the answer that the operation is defined for.
        Cancelled,
        TimedOut, ///< Nothing came or went for the whole time-out.
        CannotFindHost,
        CannotConnect,
        ConnectionLost,
        SecureConnectionFailed,
        TooManyRedirects,
        InsecureRedirect,        ///< From https to http, which is never followed.
        CannotDecodeContentData, ///< An answer that is not the picture it should be.
        Other,
    };
    Kind kind = Kind::Other;
    QString detail; ///< The transport library's words, for kinds that need them.
    bool operator==(const TransportError &) const = default;
};

/// JSON that doesn't fit the record it was read into.
struct DecodingError
{
    QString path;     ///< As "workspaces[0].id"; empty for the document itself.
    QString expected; ///< As "text".
    QString found;    ///< As "a number", "nothing".
    bool operator==(const DecodingError &) const = default;
};

/// A value that JSON can't express, such as an infinite number.
struct EncodingError
{
    QString path;
    bool operator==(const EncodingError &) const = default;
};

using Failure = std::variant<TransportError, APIError, ChatHTTPError, AuthError, LoopbackError,
                             KeychainError, DecodingError, EncodingError>;

[[nodiscard]] QString description(const Failure &failure);

/// True for a task that somebody ended on purpose: a state of its own, not an error to show.
[[nodiscard]] bool isCancellation(const Failure &failure);

template<typename T>
using Result = tl::expected<T, Failure>;

template<typename E>
[[nodiscard]] tl::unexpected<Failure> fail(E error)
{
    return tl::unexpected<Failure>(Failure(std::move(error)));
}

} // namespace velto::base
