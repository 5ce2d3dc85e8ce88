// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/records.h"

#include <QObject>
#include <QString>

#include <variant>

namespace velto::chat
{

/// Who is signed in. A closed sum with the account or the error that two of its cases carry.
class AuthStatus final
{
    Q_GADGET

public:
    enum class Kind { LoggedIn, Error, Bootstrapping, LoggedOut, Authenticating };
    Q_ENUM(Kind)

    AuthStatus() = default; ///< `Bootstrapping`, as a process starts.

    [[nodiscard]] static AuthStatus loggedIn(service::Me me)
    {
        return {Kind::LoggedIn, std::move(me)};
    }
    [[nodiscard]] static AuthStatus error(QString text) { return {Kind::Error, std::move(text)}; }
    [[nodiscard]] static AuthStatus loggedOut() { return {Kind::LoggedOut, {}}; }
    [[nodiscard]] static AuthStatus authenticating() { return {Kind::Authenticating, {}}; }

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// Null unless `LoggedIn`.
    [[nodiscard]] const service::Me *me() const { return std::get_if<service::Me>(&m_payload); }
    /// Empty unless `Error`.
    [[nodiscard]] QString errorText() const
    {
        const auto *text = std::get_if<QString>(&m_payload);
        return text != nullptr ? *text : QString();
    }

    bool operator==(const AuthStatus &) const = default;

private:
    using Payload = std::variant<std::monostate, service::Me, QString>;

    AuthStatus(Kind kind, Payload payload)
        : m_kind(kind)
        , m_payload(std::move(payload))
    {}

    Kind m_kind = Kind::Bootstrapping;
    Payload m_payload;
};

} // namespace velto::chat
