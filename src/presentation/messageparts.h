// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/messagelistmodel.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// The parts of one message, as a list of its own, so that a part that arrives adds one view and
/// leaves the others alone. Texts are not among the roles: `StreamedText` fetches what is new.
class MessageParts : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velto::chat::MessageListModel *messages READ messages WRITE setMessages NOTIFY
                   messagesChanged FINAL)
    Q_PROPERTY(int messageRow READ messageRow WRITE setMessageRow NOTIFY messageRowChanged FINAL)

public:
    enum Role {
        IsToolRole = Qt::UserRole + 1, ///< bool: a tool call, else a text
        ToolNameRole,                  ///< QString; empty for a text
        ToolStateRole,                 ///< `State`; meaningless for a text
    };
    enum class State { Running, Completed, Failed };
    Q_ENUM(State)

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] chat::MessageListModel *messages() const { return m_messages; }
    void setMessages(chat::MessageListModel *messages);
    [[nodiscard]] int messageRow() const { return m_messageRow; }
    void setMessageRow(int row);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void messagesChanged();
    void messageRowChanged();

private:
    /// What was announced of a part, to tell what has changed since.
    struct Shown
    {
        QUuid id;
        std::optional<chat::ToolState> toolState;
        bool operator==(const Shown &) const = default;
    };

    [[nodiscard]] const chat::ChatMessage *message() const;
    [[nodiscard]] static Shown shown(const chat::MessagePart &part);
    void scheduleSynchronise();
    void synchronise();
    void announceToolStates(const QList<chat::MessagePart> &parts);

    QPointer<chat::MessageListModel> m_messages;
    int m_messageRow = -1;
    bool m_isScheduled = false;
    QList<Shown> m_shown;
};

} // namespace velto::presentation
