// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/conversationcache.h"

#include "base/json.h"
#include "base/text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace velto::chat::conversationcache
{
namespace
{

struct StoredPart
{
    QString kind;
    std::optional<QString> text = {};
    std::optional<QString> toolName = {};
    std::optional<QString> toolCallID = {};
    std::optional<QString> toolInput = {};
    std::optional<QString> toolOutput = {};
    std::optional<QString> toolError = {};

    static base::json::Fields jsonFields()
    {
        using base::json::field;
        static constexpr std::array fields{field<&StoredPart::kind>("kind"),
                                           field<&StoredPart::text>("text"),
                                           field<&StoredPart::toolName>("toolName"),
                                           field<&StoredPart::toolCallID>("toolCallID"),
                                           field<&StoredPart::toolInput>("toolInput"),
                                           field<&StoredPart::toolOutput>("toolOutput"),
                                           field<&StoredPart::toolError>("toolError")};
        return fields;
    }
};

struct StoredMessage
{
    QString role;
    QList<StoredPart> parts;

    static base::json::Fields jsonFields()
    {
        using base::json::field;
        static constexpr std::array fields{field<&StoredMessage::role>("role"),
                                           field<&StoredMessage::parts>("parts")};
        return fields;
    }
};

struct Payload
{
    std::optional<QString> conversationID;
    QList<StoredMessage> messages;

    static base::json::Fields jsonFields()
    {
        using base::json::field;
        static constexpr std::array fields{field<&Payload::conversationID>("conversationID"),
                                           field<&Payload::messages>("messages")};
        return fields;
    }
};

std::optional<QString> unlessEmpty(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

StoredPart stored(const MessagePart &part)
{
    if (const auto *text = std::get_if<QString>(&part.kind))
        return {.kind = QStringLiteral("text"), .text = *text};
    const auto &call = std::get<ToolCall>(part.kind);
    return {.kind = QStringLiteral("tool"),
            .toolName = call.name,
            .toolCallID = call.callID,
            .toolInput = unlessEmpty(call.inputJSON),
            .toolOutput = unlessEmpty(call.outputJSON),
            .toolError = call.errorText};
}

StoredMessage stored(const ChatMessage &message)
{
    const bool isUser = message.role == ChatMessage::Role::User;
    StoredMessage result{isUser ? QStringLiteral("user") : QStringLiteral("assistant"), {}};
    for (const MessagePart &part : message.parts)
        result.parts.append(stored(part));
    return result;
}

MessagePart rebuilt(const StoredPart &part)
{
    if (part.kind == u"text")
        return textPart(part.text.value_or(QString()));
    if (part.kind != u"tool")
        return textPart({});
    return toolPart({.callID = part.toolCallID.value_or(base::uuidText(QUuid::createUuid())),
                     .name = part.toolName.value_or(QStringLiteral("tool")),
                     .inputJSON = part.toolInput.value_or(QString()),
                     .outputJSON = part.toolOutput.value_or(QString()),
                     .errorText = part.toolError,
                     .state = part.toolError ? ToolState::Failed : ToolState::Completed});
}

ChatMessage rebuilt(const StoredMessage &message)
{
    QList<MessagePart> parts;
    parts.reserve(message.parts.size());
    for (const StoredPart &part : message.parts)
        parts.append(rebuilt(part));
    const bool isUser = message.role == u"user";
    return newMessage(isUser ? ChatMessage::Role::User : ChatMessage::Role::Assistant,
                      std::move(parts));
}

/// What a writer that was killed has left of its half-written file.
void removeLeftOvers(const QString &file)
{
    const QFileInfo info(file);
    const QString pattern = info.fileName() + QStringLiteral(".??????");
    QDir directory = info.dir();
    const QStringList left = directory.entryList({pattern}, QDir::Files | QDir::Hidden);
    for (const QString &name : left)
        directory.remove(name);
}

} // namespace

QString defaultFile()
{
    QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (directory.isEmpty())
        directory = QDir::tempPath();
    return directory + QStringLiteral("/velto/last-conversation.json");
}

void save(const QList<ChatMessage> &messages, const std::optional<QString> &conversationID,
          const QString &file)
{
    Payload payload{conversationID, {}};
    for (const ChatMessage &message : messages)
        payload.messages.append(stored(message));
    const auto document = base::json::encode(payload, base::json::Keys::Plain);
    if (!document || !QDir().mkpath(QFileInfo(file).path()))
        return;
    removeLeftOvers(file);
    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly))
        return;
    // What was said in a chat is nobody else's business on a shared machine.
    target.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    target.write(*document);
    target.commit();
}

std::optional<Conversation> load(const QString &file)
{
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return std::nullopt;
    return parse(source.readAll());
}

void clear(const QString &file)
{
    QFile::remove(file);
    removeLeftOvers(file);
}

std::optional<Conversation> parse(const QByteArray &document)
{
    const auto payload = base::json::decode<Payload>(document, base::json::Keys::Plain);
    if (!payload || payload->messages.isEmpty())
        return std::nullopt;
    Conversation conversation{payload->conversationID, {}};
    conversation.messages.reserve(payload->messages.size());
    for (const StoredMessage &message : payload->messages)
        conversation.messages.append(rebuilt(message));
    return conversation;
}

} // namespace velto::chat::conversationcache
