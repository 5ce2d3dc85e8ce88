// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/anyjson.h"
#include "base/json.h"

#include <QList>
#include <QString>

#include <optional>
#include <tuple>

/// The records that the signed-in session is made of, as they travel. Times stay text until a
/// screen formats them.
namespace velto::service
{

struct Workspace
{
    QString id;
    QString slug;
    QString name;
    QString role; ///< "owner", "admin" or "member".

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("id", &Workspace::id), field("slug", &Workspace::slug),
                          field("name", &Workspace::name), field("role", &Workspace::role)};
    }
    bool operator==(const Workspace &) const = default;
};

struct UserInfo
{
    std::optional<QString> name;
    std::optional<QString> email;
    std::optional<QString> image;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("name", &UserInfo::name), field("email", &UserInfo::email),
                          field("image", &UserInfo::image)};
    }
    bool operator==(const UserInfo &) const = default;
};

/// Carried, not acted on.
struct PendingAgreement
{
    QString kind;
    QString version;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("kind", &PendingAgreement::kind),
                          field("version", &PendingAgreement::version)};
    }
    bool operator==(const PendingAgreement &) const = default;
};

struct Me
{
    QString userId;
    std::optional<QString> personId;
    std::optional<QString> workspaceId;
    QList<Workspace> workspaces;
    UserInfo user;
    std::optional<bool> isAdmin;
    std::optional<QList<PendingAgreement>> pendingAgreements;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("userId", &Me::userId),
                          field("personId", &Me::personId),
                          field("workspaceId", &Me::workspaceId),
                          field("workspaces", &Me::workspaces),
                          field("user", &Me::user),
                          field("isAdmin", &Me::isAdmin),
                          field("pendingAgreements", &Me::pendingAgreements)};
    }
    bool operator==(const Me &) const = default;
};

/// One row of the history.
struct ConversationSummary
{
    QString id;
    QString channel;
    std::optional<QString> title;
    std::optional<QString> summary;
    int messageCount = 0;
    QString createdAt;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("id", &ConversationSummary::id),
                          field("channel", &ConversationSummary::channel),
                          field("title", &ConversationSummary::title),
                          field("summary", &ConversationSummary::summary),
                          field("messageCount", &ConversationSummary::messageCount),
                          field("createdAt", &ConversationSummary::createdAt)};
    }
    bool operator==(const ConversationSummary &) const = default;
};

struct StoredPart
{
    QString type;
    std::optional<QString> text;
    std::optional<QString> toolName;
    std::optional<QString> toolCallId;
    std::optional<base::AnyJSON> input;
    std::optional<base::AnyJSON> output;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{
            field("type", &StoredPart::type),         field("text", &StoredPart::text),
            field("toolName", &StoredPart::toolName), field("toolCallId", &StoredPart::toolCallId),
            field("input", &StoredPart::input),       field("output", &StoredPart::output)};
    }
    bool operator==(const StoredPart &) const = default;
};

/// A message of a conversation as the service keeps it.
struct StoredUIMessage
{
    QString id;
    QString role;
    QList<StoredPart> parts;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{field("id", &StoredUIMessage::id), field("role", &StoredUIMessage::role),
                          field("parts", &StoredUIMessage::parts)};
    }
    bool operator==(const StoredUIMessage &) const = default;
};

struct SwitchWorkspaceRequest
{
    QString workspaceId;

    static constexpr auto jsonFields()
    {
        return std::tuple{base::json::field("workspaceId", &SwitchWorkspaceRequest::workspaceId)};
    }
    bool operator==(const SwitchWorkspaceRequest &) const = default;
};

struct LibraryEnabledPatch
{
    bool enabled = false;

    static constexpr auto jsonFields()
    {
        return std::tuple{base::json::field("enabled", &LibraryEnabledPatch::enabled)};
    }
    bool operator==(const LibraryEnabledPatch &) const = default;
};

struct MemberRolePatch
{
    QString role;

    static constexpr auto jsonFields()
    {
        return std::tuple{base::json::field("role", &MemberRolePatch::role)};
    }
    bool operator==(const MemberRolePatch &) const = default;
};

/// The answer of the token endpoint. All four fields are required.
struct Tokens
{
    QString accessToken;
    QString tokenType;
    int expiresIn = 0; ///< Seconds.
    QString refreshToken;

    static constexpr auto jsonFields()
    {
        using base::json::field;
        return std::tuple{
            field("accessToken", &Tokens::accessToken), field("tokenType", &Tokens::tokenType),
            field("expiresIn", &Tokens::expiresIn), field("refreshToken", &Tokens::refreshToken)};
    }
    bool operator==(const Tokens &) const = default;
};

} // namespace velto::service
