// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/storedmessages.h"

#include "base/text.h"

namespace velto::chat
{
namespace
{

std::optional<MessagePart> partFrom(const service::StoredPart &part)
{
    if (part.type == u"text") {
        if (!part.text || part.text->isEmpty())
            return std::nullopt;
        return textPart(*part.text);
    }
    if (part.type != u"dynamic-tool")
        return std::nullopt;
    return toolPart({.callID = part.toolCallId.value_or(base::uuidText(QUuid::createUuid())),
                     .name = part.toolName.value_or(QStringLiteral("tool")),
                     .inputJSON = base::prettyString(part.input),
                     .outputJSON = base::prettyString(part.output),
                     .errorText = std::nullopt,
                     .state = ToolState::Completed});
}

std::optional<ChatMessage::Role> roleFrom(const QString &role)
{
    if (role == u"assistant")
        return ChatMessage::Role::Assistant;
    if (role == u"user")
        return ChatMessage::Role::User;
    return std::nullopt;
}

} // namespace

QList<ChatMessage> chatMessagesFrom(const QList<service::StoredUIMessage> &stored)
{
    QList<ChatMessage> messages;
    for (const service::StoredUIMessage &message : stored) {
        const auto role = roleFrom(message.role);
        QList<MessagePart> parts;
        for (const service::StoredPart &part : message.parts) {
            if (auto converted = partFrom(part))
                parts.append(std::move(*converted));
        }
        if (role && !parts.isEmpty())
            messages.append(newMessage(*role, std::move(parts)));
    }
    return messages;
}

} // namespace velto::chat
