// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/conversationtitle.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace velto::presentation
{

namespace
{

constexpr int titleLength = 60;

// Characters as readers count them: a flag or an accented letter is never cut in two.
QString firstCharacters(const QString &text, int count)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (int taken = 0; taken < count && finder.toNextBoundary() > 0; ++taken)
        end = finder.position();
    return text.left(end);
}

QString storedTitle(const QString &id, const QList<service::ConversationSummary> &conversations)
{
    const auto open =
        std::find_if(conversations.cbegin(), conversations.cend(),
                     [&](const service::ConversationSummary &summary) { return summary.id == id; });
    return open == conversations.cend() ? QString() : open->title.value_or(QString()).trimmed();
}

} // namespace

std::optional<QString>
conversationTitle(const std::optional<QString> &conversationID,
                  const std::optional<QList<service::ConversationSummary>> &conversations,
                  const QList<chat::ChatMessage> &messages)
{
    if (conversationID && conversations) {
        const QString title = storedTitle(*conversationID, *conversations);
        if (!title.isEmpty())
            return title;
    }
    const auto first =
        std::find_if(messages.cbegin(), messages.cend(), [](const chat::ChatMessage &message) {
            return message.role == chat::ChatMessage::Role::User;
        });
    if (first == messages.cend())
        return std::nullopt;
    const QString line = first->plainText().trimmed().replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QString title = firstCharacters(line, titleLength);
    return title.isEmpty() ? std::nullopt : std::optional(title);
}

bool canSendDraft(QStringView draft)
{
    return std::any_of(draft.cbegin(), draft.cend(), [](QChar character) {
        return character != QLatin1Char('\t') && character.category() != QChar::Separator_Space;
    });
}

} // namespace velto::presentation
