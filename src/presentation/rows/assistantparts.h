// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/messagelistmodel.h"
#include "presentation/media/mediasegments.h"
#include "presentation/tools/assistantchunks.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <map>

namespace velto::presentation
{

/// The chunks of one assistant's message as rows of a list, texts cut around their videos, so that
/// what arrives adds one view and leaves the others alone. Growing texts are not among the roles: a
/// view fetches what is new.
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
        KindRole = Qt::UserRole + 1, ///< Kind
        GapRole,                     ///< double: room above it, in device-independent pixels
        ToolsRole,                   ///< list of ToolCallValue; empty unless Tools
        SummaryRole,                 ///< QString: how several calls stand, in a line
        VideoURLRole,                ///< QUrl; empty unless Video
        CaptionRole,                 ///< QString; of a video
    };
    enum Kind { Text, Tools, Video };
    Q_ENUM(Kind)

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] chat::MessageListModel *messages() const { return m_messages; }
    void setMessages(chat::MessageListModel *messages);
    [[nodiscard]] int messageRow() const { return m_messageRow; }
    void setMessageRow(int row);
    [[nodiscard]] int count() const { return static_cast<int>(m_rows.size()); }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// The text of a row as it stands now; empty for what is none. Valid until the message changes.
    [[nodiscard]] QStringView text(int row) const;

signals:
    void messagesChanged();
    void messageRowChanged();
    void countChanged();
    /// The text of the row has become longer.
    void textGrew(int row);
    /// The text of the row may be any other.
    void textChanged(int row);
    /// The message has become another or longer.
    void partsChanged();

private:
    struct Row
    {
        QUuid part; ///< The first in it.
        qsizetype segment = 0;
        Kind kind = Text;
        QList<chat::ToolCall> tools;
        VideoSegment video;
        bool operator==(const Row &) const = default;
        [[nodiscard]] bool isSameAs(const Row &other) const
        {
            return part == other.part && segment == other.segment && kind == other.kind;
        }
    };
    /// A text with its segments, which has taken `taken` UTF-16 units of it.
    struct Segmented
    {
        GrowingSegments segments;
        qsizetype taken = 0;
    };

    [[nodiscard]] const chat::ChatMessage *message() const;
    GrowingSegments::Change takeText(const chat::MessagePart &part);
    [[nodiscard]] QList<Row> currentRows();
    void noteChange(bool onlyTextGrew);
    [[nodiscard]] bool growLastText();
    void scheduleSynchronise();
    void synchronise();

    QPointer<chat::MessageListModel> m_messages;
    int m_messageRow = -1;
    bool m_isScheduled = false;
    QList<Row> m_rows;
    std::map<QUuid, Segmented> m_texts; ///< By part.
};

} // namespace velto::presentation
