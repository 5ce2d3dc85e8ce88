// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/assistantparts.h"

#include "presentation/tools/toolcallvalue.h"

#include <algorithm>
#include <utility>

namespace velto::presentation
{

using chat::ChatMessage;
using chat::MessageListModel;
using chat::ToolCall;

void AssistantParts::setMessages(MessageListModel *messages)
{
    if (m_messages == messages)
        return;
    if (m_messages != nullptr)
        m_messages->disconnect(this);
    m_messages = messages;
    if (messages != nullptr) {
        connect(messages, &MessageListModel::dataChanged, this,
                [this](const QModelIndex &from, const QModelIndex &to, const QList<int> &roles) {
                    if (from.row() <= m_messageRow && m_messageRow <= to.row())
                        noteChange(MessageListModel::onlyTextGrew(roles));
                });
    }
    emit messagesChanged();
    synchronise();
}

void AssistantParts::setMessageRow(int row)
{
    if (m_messageRow == row)
        return;
    m_messageRow = row;
    emit messageRowChanged();
    synchronise();
}

void AssistantParts::noteChange(bool onlyTextGrew)
{
    if (!onlyTextGrew || m_isScheduled)
        return scheduleSynchronise();
    emit textGrew(count() - 1);
    emit partsChanged();
}

// A view for a chunk costs more than hundreds of deltas; those that arrived since the last frame
// are made together.
void AssistantParts::scheduleSynchronise()
{
    if (std::exchange(m_isScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            synchronise();
        },
        Qt::QueuedConnection);
}

int AssistantParts::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant AssistantParts::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Chunk &chunk = m_chunks[index.row()];
    switch (role) {
    case IsToolsRole:
        return chunk.isTools();
    case ToolsRole: {
        QVariantList tools;
        for (const ToolCall &call : chunk.tools)
            tools.append(QVariant::fromValue(ToolCallValue(call)));
        return tools;
    }
    case SummaryRole:
        return chunk.tools.size() > 1 ? toolGroupSummary(chunk.tools) : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> AssistantParts::roleNames() const
{
    return {{IsToolsRole, "isTools"}, {ToolsRole, "tools"}, {SummaryRole, "summary"}};
}

QStringView AssistantParts::text(int row) const
{
    const ChatMessage *source = message();
    if (source == nullptr || row < 0 || row >= count() ||
        m_chunks[row].part >= source->parts.size())
        return {};
    const auto *text = std::get_if<QString>(&source->parts[m_chunks[row].part].kind);
    return text != nullptr ? QStringView(*text) : QStringView();
}

const ChatMessage *AssistantParts::message() const
{
    if (m_messages == nullptr || m_messageRow < 0 || m_messageRow >= m_messages->count())
        return nullptr;
    return &m_messages->at(m_messageRow);
}

QList<AssistantParts::Chunk> AssistantParts::chunksOf(const ChatMessage &message)
{
    QList<Chunk> chunks;
    qsizetype part = 0;
    for (const AssistantChunk &chunk : assistantChunks(message.parts)) {
        const auto *tools = std::get_if<QList<ToolCall>>(&chunk.kind);
        chunks.append({chunk.id, part, tools != nullptr ? *tools : QList<ToolCall>()});
        part += tools != nullptr ? tools->size() : 1;
    }
    return chunks;
}

void AssistantParts::synchronise()
{
    const ChatMessage *source = message();
    QList<Chunk> chunks = source != nullptr ? chunksOf(*source) : QList<Chunk>();
    const auto [old, now] = std::ranges::mismatch(
        m_chunks, chunks, [](const Chunk &a, const Chunk &b) { return a.isSameAs(b); });
    const int same = static_cast<int>(old - m_chunks.begin());
    if (same < count()) {
        beginRemoveRows({}, same, count() - 1);
        m_chunks.resize(same);
        endRemoveRows();
    }
    for (int row = 0; row < same; ++row) {
        if (!chunks[row].isTools()) {
            emit textGrew(row);
        } else if (m_chunks[row] != chunks[row]) {
            m_chunks[row] = chunks[row];
            emit dataChanged(index(row), index(row), {ToolsRole, SummaryRole});
        }
    }
    if (same < chunks.size()) {
        beginInsertRows({}, same, static_cast<int>(chunks.size()) - 1);
        m_chunks.append(chunks.sliced(same));
        endInsertRows();
    }
    emit countChanged();
    emit partsChanged();
}

} // namespace velto::presentation
