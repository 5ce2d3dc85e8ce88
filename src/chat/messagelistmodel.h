// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/chatstreamevent.h"
#include "chat/message.h"

#include <QAbstractListModel>

namespace velto::chat
{

/// The messages of the open conversation, oldest first, as views see them.
///
/// A streamed event changes one message in place and announces that one row. Views learn from the
/// `contentVolume` role that a row grew and fetch what they need through `at` when they next draw;
/// a view that keeps a copy of a text makes every further delta cost the whole text.
class MessageListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    enum Role {
        MessageIdRole = Qt::UserRole + 1, ///< QUuid
        IsUserRole,                       ///< bool: the user's turn, else the assistant's
        PartCountRole,                    ///< int
        ContentVolumeRole,                ///< double: grows with a streamed message
        CreatedAtRole,                    ///< QDateTime
        RunningToolsRole,                 ///< int: tool calls that have not come to an end
        BranchCountRole,                  ///< int: versions of a user's turn; 0 before an edit
        ActiveBranchRole,                 ///< int: which of them is on screen
        UserTextRole,                     ///< QString: of a user's turn; else empty
    };
    Q_ENUM(Role)

    using QAbstractListModel::QAbstractListModel;

    /// Whether a `dataChanged` with these roles says no more than that the last text became longer.
    [[nodiscard]] static bool onlyTextGrew(const QList<int> &roles)
    {
        return roles.size() == 1 && roles.first() == ContentVolumeRole;
    }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] int count() const { return static_cast<int>(m_messages.size()); }
    [[nodiscard]] const QList<ChatMessage> &messages() const { return m_messages; }
    /// `row` must be inside the list.
    [[nodiscard]] const ChatMessage &at(int row) const { return m_messages[row]; }

    /// The text of a message, without what tools were given and gave; empty outside the list.
    [[nodiscard]] Q_INVOKABLE QString plainText(int row) const;

    /// Takes over a whole list. Rows at the front whose ids stay are kept, and of them only what
    /// changed is announced.
    void setMessages(QList<ChatMessage> messages);
    void append(ChatMessage message);
    /// Removes every message from `row` on. Nothing happens when there is none.
    void truncate(int row);
    /// Applies an event to the message at `row`, which must be inside the list.
    void apply(const ChatStreamEvent &event, int row);
    /// Appends the note of a stopped answer; does nothing when `row` is outside the list.
    void appendStoppedNote(int row);

signals:
    void countChanged();

private:
    void announce(int row, const QList<int> &roles);

    QList<ChatMessage> m_messages;
};

} // namespace velto::chat
