// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/streamedtext.h"

#include <QElapsedTimer>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>

#include <chrono>

namespace velto::presentation
{

using chat::MessageListModel;
using chat::MessagePart;

namespace
{

// A take-over that lasts longer than this holds up the frame; the next one waits so that laying
// out never takes more than a third of the time.
constexpr std::chrono::milliseconds longTakeOver{5};
constexpr int pauseFactor = 2;

// From here on a view draws only the lines that show.
constexpr qsizetype largeText = 8'000;

} // namespace

void StreamedText::setDocument(QQuickTextDocument *document)
{
    if (m_document == document)
        return;
    m_document = document;
    m_shownPart = {};
    if (document != nullptr)
        textDocument()->setUndoRedoEnabled(false);
    emit documentChanged();
    requestUpdate();
}

void StreamedText::setMessages(MessageListModel *messages)
{
    if (m_messages == messages)
        return;
    if (m_messages != nullptr)
        m_messages->disconnect(this);
    m_messages = messages;
    if (messages != nullptr) {
        connect(messages, &MessageListModel::dataChanged, this,
                [this](const QModelIndex &from, const QModelIndex &to) {
                    if (from.row() <= m_messageRow && m_messageRow <= to.row())
                        requestUpdate();
                });
    }
    emit messagesChanged();
    requestUpdate();
}

void StreamedText::setMessageRow(int row)
{
    if (m_messageRow == row)
        return;
    m_messageRow = row;
    emit messageRowChanged();
    requestUpdate();
}

void StreamedText::setPart(int part)
{
    if (m_part == part)
        return;
    m_part = part;
    emit partChanged();
    requestUpdate();
}

void StreamedText::setLineHeight(qreal height)
{
    if (m_lineHeight == height)
        return;
    m_lineHeight = height;
    m_shownPart = {};
    emit lineHeightChanged();
    requestUpdate();
}

void StreamedText::componentComplete()
{
    QQuickItem::componentComplete();
    takeOver(); // a list needs to know how tall its rows are
}

void StreamedText::updatePolish()
{
    if (m_pause.isActive())
        return;
    QElapsedTimer clock;
    clock.start();
    takeOver();
    const auto cost = std::chrono::milliseconds(clock.elapsed());
    if (cost > longTakeOver)
        m_pause.start(static_cast<int>(cost.count()) * pauseFactor, this);
}

void StreamedText::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_pause.timerId())
        return QQuickItem::timerEvent(event);
    m_pause.stop();
    requestUpdate();
}

const MessagePart *StreamedText::source() const
{
    if (m_messages == nullptr || m_messageRow < 0 || m_messageRow >= m_messages->count())
        return nullptr;
    const QList<MessagePart> &parts = m_messages->at(m_messageRow).parts;
    return m_part >= 0 && m_part < parts.size() ? &parts[m_part] : nullptr;
}

QTextDocument *StreamedText::textDocument() const
{
    return m_document != nullptr ? m_document->textDocument() : nullptr;
}

void StreamedText::requestUpdate()
{
    if (isComponentComplete() && !m_pause.isActive())
        polish();
}

void StreamedText::takeOver()
{
    const MessagePart *part = source();
    const auto *text = part != nullptr ? std::get_if<QString>(&part->kind) : nullptr;
    if (text == nullptr || textDocument() == nullptr)
        return; // the view is about to go
    const bool isNew = part->id != m_shownPart || text->size() < m_taken;
    if (isNew) {
        clear();
        m_shownPart = part->id;
    }
    QStringView tail = QStringView(*text).sliced(m_taken);
    // A carriage return waits for the line feed that may follow it.
    if (tail.endsWith(u'\r'))
        tail.chop(1);
    if (tail.isEmpty())
        return;
    if (!isNew)
        emit growing();
    append(tail);
    m_taken += tail.size();
}

void StreamedText::clear()
{
    m_taken = 0;
    QTextCursor cursor(textDocument());
    cursor.select(QTextCursor::Document);
    cursor.removeSelectedText();
    QTextBlockFormat format;
    format.setLineHeight(m_lineHeight * 100, QTextBlockFormat::ProportionalHeight);
    format.setAlignment(Qt::AlignLeading); // a paragraph's own direction decides its side
    cursor.setBlockFormat(format);
}

void StreamedText::append(QStringView tail)
{
    QTextCursor cursor(textDocument());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(tail.toString());
    auto *view = qobject_cast<QQuickItem *>(m_document->parent());
    if (view != nullptr && m_taken + tail.size() >= largeText)
        view->setFlag(ItemObservesViewport);
}

} // namespace velto::presentation
