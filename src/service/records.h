// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/anyjson.h"
#include "base/json.h"

#include <QList>
#include <QString>

#include <optional>

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

    static base::json::Fields jsonFields();
    bool operator==(const Workspace &) const = default;
};

struct UserInfo
{
    std::optional<QString> name;
    std::optional<QString> email;
    std::optional<QString> image;

    static base::json::Fields jsonFields();
    bool operator==(const UserInfo &) const = default;
};

/// Carried, not acted on.
struct PendingAgreement
{
    QString kind;
    QString version;

    static base::json::Fields jsonFields();
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

    static base::json::Fields jsonFields();
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

    static base::json::Fields jsonFields();
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

    static base::json::Fields jsonFields();
    bool operator==(const StoredPart &) const = default;
};

/// A message of a conversation as the service keeps it.
struct StoredUIMessage
{
    QString id;
    QString role;
    QList<StoredPart> parts;

    static base::json::Fields jsonFields();
    bool operator==(const StoredUIMessage &) const = default;
};

struct SwitchWorkspaceRequest
{
    QString workspaceId;

    static base::json::Fields jsonFields();
    bool operator==(const SwitchWorkspaceRequest &) const = default;
};

struct LibraryEnabledPatch
{
    bool enabled = false;

    static base::json::Fields jsonFields();
    bool operator==(const LibraryEnabledPatch &) const = default;
};

struct MemberRolePatch
{
    QString role;

    static base::json::Fields jsonFields();
    bool operator==(const MemberRolePatch &) const = default;
};

/// The answer of the token endpoint. All four fields are required.
struct Tokens
{
    QString accessToken;
    QString tokenType;
    int expiresIn = 0; ///< Seconds.
    QString refreshToken;

    static base::json::Fields jsonFields();
    bool operator==(const Tokens &) const = default;
};

} // namespace velto::service
