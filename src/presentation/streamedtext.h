// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/messagelistmodel.h"

#include <QBasicTimer>
#include <QPointer>
#include <QQuickItem>
#include <QQuickTextDocument>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

class QTextDocument;

namespace velto::presentation
{

/// Keeps the document of a text view equal to one text part of a message while the text grows.
///
/// At most once a frame it takes over what came since the last time and inserts it at the end, so a
/// frame costs what grew and not the whole text; the text itself is never copied. A paragraph that
/// has become so long that laying it out takes its time is taken over less often.
class StreamedText : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        QQuickTextDocument *document READ document WRITE setDocument NOTIFY documentChanged FINAL)
    Q_PROPERTY(velto::chat::MessageListModel *messages READ messages WRITE setMessages NOTIFY
                   messagesChanged FINAL)
    Q_PROPERTY(int messageRow READ messageRow WRITE setMessageRow NOTIFY messageRowChanged FINAL)
    Q_PROPERTY(int part READ part WRITE setPart NOTIFY partChanged FINAL)
    /// Distance of lines in proportion to the font's own.
    Q_PROPERTY(qreal lineHeight READ lineHeight WRITE setLineHeight NOTIFY lineHeightChanged FINAL)

public:
    using QQuickItem::QQuickItem;

    [[nodiscard]] QQuickTextDocument *document() const { return m_document; }
    void setDocument(QQuickTextDocument *document);
    [[nodiscard]] chat::MessageListModel *messages() const { return m_messages; }
    void setMessages(chat::MessageListModel *messages);
    [[nodiscard]] int messageRow() const { return m_messageRow; }
    void setMessageRow(int row);
    [[nodiscard]] int part() const { return m_part; }
    void setPart(int part);
    [[nodiscard]] qreal lineHeight() const { return m_lineHeight; }
    void setLineHeight(qreal height);

signals:
    void documentChanged();
    void messagesChanged();
    void messageRowChanged();
    void partChanged();
    void lineHeightChanged();
    /// The document, which has been filled before, is about to grow. Whoever polishes an item in
    /// answer is polished after everything that the growth sets in motion.
    void growing();

protected:
    void componentComplete() override;
    void updatePolish() override;
    void timerEvent(QTimerEvent *event) override;

private:
    [[nodiscard]] const chat::MessagePart *source() const;
    [[nodiscard]] QTextDocument *textDocument() const;
    void requestUpdate();
    void takeOver();
    void clear();
    void append(QStringView tail);

    QPointer<QQuickTextDocument> m_document;
    QPointer<chat::MessageListModel> m_messages;
    int m_messageRow = -1;
    int m_part = -1;
    qreal m_lineHeight = 1;
    QUuid m_shownPart;
    qsizetype m_taken = 0; ///< UTF-16 units of the part that the document holds.
    QBasicTimer m_pause;
};

} // namespace velto::presentation
