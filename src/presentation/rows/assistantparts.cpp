// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/assistantparts.h"

#include "presentation/tools/toolcallvalue.h"
#include "service/apibaseurl.h"

#include <algorithm>
#include <utility>

namespace velto::presentation
{

using chat::ChatMessage;
using chat::MessageListModel;
using chat::MessagePart;
using chat::ToolCall;

namespace
{

constexpr double chunkGap = 6;
constexpr double segmentGap = 8;

} // namespace

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
    if (!onlyTextGrew || m_isScheduled || !growLastText())
        return scheduleSynchronise();
    emit partsChanged();
}

/// False when more than the last row is concerned.
bool AssistantParts::growLastText()
{
    const ChatMessage *source = message();
    if (source == nullptr || source->parts.isEmpty() || m_rows.isEmpty() ||
        m_rows.last().kind != Text || m_rows.last().part != source->parts.last().id)
        return false;
    const GrowingSegments::Change change = takeText(source->parts.last());
    if (!change.isLonger || change.first != m_rows.last().segment)
        return false;
    emit textGrew(count() - 1);
    return true;
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
    const Row &row = m_rows[index.row()];
    switch (role) {
    case KindRole:
        return row.kind;
    case GapRole:
        if (index.row() == 0)
            return 0.0;
        return m_rows[index.row() - 1].part == row.part ? segmentGap : chunkGap;
    case ToolsRole: {
        QVariantList tools;
        for (const ToolCall &call : row.tools)
            tools.append(QVariant::fromValue(ToolCallValue(call)));
        return tools;
    }
    case SummaryRole:
        return row.tools.size() > 1 ? toolGroupSummary(row.tools) : QString();
    case VideoURLRole:
        return row.video.url;
    case CaptionRole:
        return row.video.caption;
    default:
        return {};
    }
}

QHash<int, QByteArray> AssistantParts::roleNames() const
{
    return {{KindRole, "kind"},       {GapRole, "gap"},           {ToolsRole, "tools"},
            {SummaryRole, "summary"}, {VideoURLRole, "videoURL"}, {CaptionRole, "caption"}};
}

QStringView AssistantParts::text(int row) const
{
    if (row < 0 || row >= count() || m_rows[row].kind != Text)
        return {};
    const auto found = m_texts.find(m_rows[row].part);
    if (found == m_texts.end() || m_rows[row].segment >= found->second.segments.segments().size())
        return {};
    const auto *segment =
        std::get_if<MarkdownSegment>(&found->second.segments.segments()[m_rows[row].segment]);
    return segment != nullptr ? QStringView(segment->text) : QStringView();
}

const ChatMessage *AssistantParts::message() const
{
    if (m_messages == nullptr || m_messageRow < 0 || m_messageRow >= m_messages->count())
        return nullptr;
    return &m_messages->at(m_messageRow);
}

GrowingSegments::Change AssistantParts::takeText(const MessagePart &part)
{
    const QString &text = std::get<QString>(part.kind);
    auto found = m_texts.find(part.id);
    if (found == m_texts.end() || found->second.taken > text.size()) {
        found =
            m_texts.insert_or_assign(part.id, Segmented{GrowingSegments(service::apiBaseURL()), 0})
                .first;
    }
    Segmented &segmented = found->second;
    const QStringView tail = QStringView(text).sliced(segmented.taken);
    segmented.taken = text.size();
    return segmented.segments.append(tail);
}

QList<AssistantParts::Row> AssistantParts::currentRows()
{
    QList<Row> rows;
    const ChatMessage *source = message();
    if (source == nullptr)
        return rows;
    qsizetype part = 0;
    for (const AssistantChunk &chunk : assistantChunks(source->parts)) {
        if (const auto *tools = std::get_if<QList<ToolCall>>(&chunk.kind)) {
            rows.append({chunk.id, 0, Tools, *tools, {}});
            part += tools->size();
            continue;
        }
        takeText(source->parts[part++]);
        const QList<MediaSegment> &segments = m_texts.at(chunk.id).segments.segments();
        for (qsizetype segment = 0; segment < segments.size(); ++segment) {
            const auto *video = std::get_if<VideoSegment>(&segments[segment]);
            rows.append({chunk.id,
                         segment,
                         video != nullptr ? Video : Text,
                         {},
                         video != nullptr ? *video : VideoSegment()});
        }
    }
    return rows;
}

void AssistantParts::synchronise()
{
    const QList<Row> rows = currentRows();
    const auto [old, now] = std::ranges::mismatch(
        m_rows, rows, [](const Row &a, const Row &b) { return a.isSameAs(b); });
    const int same = static_cast<int>(old - m_rows.begin());
    if (same < count()) {
        beginRemoveRows({}, same, count() - 1);
        m_rows.resize(same);
        endRemoveRows();
    }
    for (int row = 0; row < same; ++row) {
        if (rows[row].kind == Text) {
            emit textChanged(row);
        } else if (m_rows[row] != rows[row]) {
            m_rows[row] = rows[row];
            emit dataChanged(index(row), index(row),
                             {ToolsRole, SummaryRole, VideoURLRole, CaptionRole});
        }
    }
    if (same < rows.size()) {
        beginInsertRows({}, same, static_cast<int>(rows.size()) - 1);
        m_rows.append(rows.sliced(same));
        endInsertRows();
    }
    std::erase_if(m_texts, [&](const auto &text) {
        return std::ranges::find(rows, text.first, &Row::part) == rows.end();
    });
    emit countChanged();
    emit partsChanged();
}

} // namespace velto::presentation
