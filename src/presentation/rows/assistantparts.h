// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/messagelistmodel.h"
#include "presentation/tools/assistantchunks.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// The chunks of one assistant's message as rows of a list, so that what arrives adds one view and
/// leaves the others alone. Growing texts are not among the roles: a view fetches what is new.
class AssistantParts : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velto::chat::MessageListModel *messages READ messages WRITE setMessages NOTIFY
                   messagesChanged FINAL)
    Q_PROPERTY(int messageRow READ messageRow WRITE setMessageRow NOTIFY messageRowChanged FINAL)
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    enum Role {
        IsToolsRole = Qt::UserRole + 1, ///< bool: tool calls, else a text
        ToolsRole,                      ///< list of ToolCallValue; empty for a text
        SummaryRole,                    ///< QString: how several calls stand, in a line
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] chat::MessageListModel *messages() const { return m_messages; }
    void setMessages(chat::MessageListModel *messages);
    [[nodiscard]] int messageRow() const { return m_messageRow; }
    void setMessageRow(int row);
    [[nodiscard]] int count() const { return static_cast<int>(m_chunks.size()); }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// The text of a row as it stands now; empty for tool calls. Valid until the message changes.
    [[nodiscard]] QStringView text(int row) const;

signals:
    void messagesChanged();
    void messageRowChanged();
    void countChanged();
    /// The text of the row has become longer.
    void textGrew(int row);
    /// The message has become another or longer.
    void partsChanged();

private:
    /// What a row shows, without the text.
    struct Chunk
    {
        QUuid id;
        qsizetype part = 0; ///< Of the first part in it.
        QList<chat::ToolCall> tools;
        bool operator==(const Chunk &) const = default;
        [[nodiscard]] bool isTools() const { return !tools.isEmpty(); }
        [[nodiscard]] bool isSameAs(const Chunk &other) const
        {
            return id == other.id && isTools() == other.isTools();
        }
    };

    [[nodiscard]] const chat::ChatMessage *message() const;
    [[nodiscard]] static QList<Chunk> chunksOf(const chat::ChatMessage &message);
    void noteChange(bool onlyTextGrew);
    void scheduleSynchronise();
    void synchronise();

    QPointer<chat::MessageListModel> m_messages;
    int m_messageRow = -1;
    bool m_isScheduled = false;
    QList<Chunk> m_chunks;
};

} // namespace velto::presentation
