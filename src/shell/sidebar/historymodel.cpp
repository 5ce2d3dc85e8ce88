// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/sidebar/historymodel.h"

#include "shell/sidebar/displaytitle.h"

#include <QGuiApplication>
#include <QSet>

#include <algorithm>
#include <chrono>
#include <limits>

namespace velto::shell
{

using chat::AppState;

namespace
{

/// More steps than this cost a view more than showing other content in the rows it has.
constexpr int mostSteps = 64;

// A machine that sleeps doesn't count the time.
constexpr std::chrono::milliseconds longestWait = std::chrono::minutes(10);

} // namespace

HistoryModel::HistoryModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_clock([] { return QDateTime::currentDateTime(); })
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &HistoryModel::regroup);
    if (qGuiApp != nullptr) {
        connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](auto state) {
            if (state == Qt::ApplicationActive)
                regroup();
        });
    }
    updatePlaceholder();
}

void HistoryModel::setAppState(AppState *appState)
{
    if (m_appState == appState)
        return;
    if (m_appState != nullptr)
        m_appState->disconnect(this);
    m_appState = appState;
    if (appState != nullptr)
        connect(appState, &AppState::conversationsChanged, this, &HistoryModel::readConversations);
    emit appStateChanged();
    readConversations();
}

void HistoryModel::setQuery(const QString &query)
{
    if (m_query == query)
        return;
    m_query = query;
    emit queryChanged();
    overwrite(rows());
    updatePlaceholder();
}

void HistoryModel::setClock(Clock clock)
{
    m_clock = std::move(clock);
    readConversations();
}

int HistoryModel::rowOf(const QString &conversationID) const
{
    const auto row = std::ranges::find(m_rows, conversationID, &Row::id);
    return row == m_rows.cend() ? -1 : static_cast<int>(row - m_rows.cbegin());
}

int HistoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant HistoryModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case ConversationIDRole:
        return row.id;
    case Qt::DisplayRole:
    case TitleRole:
        return row.title;
    case BucketLabelRole:
        return row.bucketLabel;
    default:
        return {};
    }
}

QHash<int, QByteArray> HistoryModel::roleNames() const
{
    return {{ConversationIDRole, "conversationID"},
            {TitleRole, "title"},
            {BucketLabelRole, "bucketLabel"}};
}

void HistoryModel::readConversations()
{
    m_entries.clear();
    if (m_appState != nullptr && m_appState->conversations()) {
        const qint64 now = m_clock().toMSecsSinceEpoch();
        for (const auto &conversation : *m_appState->conversations()) {
            m_entries.append({conversation.id, displayTitle(conversation),
                              searchableTexts(conversation),
                              internetDateTime(conversation.createdAt).value_or(now)});
        }
    }
    regroup();
}

void HistoryModel::regroup()
{
    merge(rows());
    updatePlaceholder();
    waitForNextChange();
}

void HistoryModel::waitForNextChange()
{
    if (m_entries.isEmpty())
        return m_timer.stop();
    const HistoryCalendar calendar(m_clock(), QTimeZone::systemTimeZone());
    qint64 next = std::numeric_limits<qint64>::max();
    for (const Entry &entry : m_entries)
        next = std::min(next, calendar.nextChange(entry.began));
    m_timer.start(std::min(std::chrono::milliseconds(next - calendar.now()), longestWait));
}

QList<HistoryModel::Row> HistoryModel::rows() const
{
    const QString needle = searchNeedle(m_query);
    const HistoryCalendar calendar(m_clock(), QTimeZone::systemTimeZone());
    std::array<QList<const Entry *>, allBuckets.size()> found;
    for (const Entry &entry : m_entries) {
        if (needle.isEmpty() || matches(entry.texts, needle))
            found.at(static_cast<std::size_t>(calendar.bucketOf(entry.began))).append(&entry);
    }
    QList<Row> rows;
    for (const Bucket bucket : allBuckets) {
        QString label = bucketLabel(bucket);
        for (const Entry *entry : found.at(static_cast<std::size_t>(bucket)))
            rows.append({entry->id, entry->title, std::exchange(label, QString())});
    }
    return rows;
}

void HistoryModel::updatePlaceholder()
{
    QString text;
    if (m_appState == nullptr || !m_appState->conversations())
        text = tr("Loading…");
    else if (m_entries.isEmpty())
        text = tr("No conversations yet");
    else if (m_rows.isEmpty())
        text = tr("No matches");
    if (m_placeholder == text)
        return;
    m_placeholder = text;
    emit placeholderChanged();
}

void HistoryModel::merge(const QList<Row> &next)
{
    int steps = removeRowsWithout(next);
    QSet<QString> known;
    for (const Row &row : m_rows)
        known.insert(row.id);
    for (qsizetype at = 0; at < next.size() && steps < mostSteps; ++at) {
        if (at < m_rows.size() && m_rows.at(at).id == next.at(at).id)
            continue;
        bring(next, at, known);
        ++steps;
    }
    overwrite(next);
}

int HistoryModel::removeRowsWithout(const QList<Row> &next)
{
    QSet<QString> kept;
    for (const Row &row : next)
        kept.insert(row.id);
    int steps = 0;
    for (qsizetype end = m_rows.size(); end > 0 && steps < mostSteps;) {
        qsizetype start = end;
        while (start > 0 && !kept.contains(m_rows.at(start - 1).id))
            --start;
        if (start < end) {
            beginRemoveRows({}, static_cast<int>(start), static_cast<int>(end - 1));
            m_rows.remove(start, end - start);
            endRemoveRows();
            ++steps;
        }
        end = start - 1;
    }
    return steps;
}

void HistoryModel::bring(const QList<Row> &next, qsizetype at, const QSet<QString> &known)
{
    const auto there = std::find_if(m_rows.cbegin() + at, m_rows.cend(),
                                    [&](const Row &row) { return row.id == next.at(at).id; });
    if (there != m_rows.cend()) {
        const auto from = static_cast<int>(there - m_rows.cbegin());
        beginMoveRows({}, from, from, {}, static_cast<int>(at));
        m_rows.move(from, at);
        endMoveRows();
        return;
    }
    const auto end = std::find_if(next.cbegin() + at + 1, next.cend(),
                                  [&](const Row &row) { return known.contains(row.id); });
    const QList<Row> fresh(next.cbegin() + at, end);
    beginInsertRows({}, static_cast<int>(at), static_cast<int>(at + fresh.size() - 1));
    m_rows = m_rows.mid(0, at) + fresh + m_rows.mid(at);
    endInsertRows();
}

void HistoryModel::overwrite(const QList<Row> &next)
{
    const auto [ours, theirs] = std::ranges::mismatch(m_rows, next);
    const qsizetype first = ours - m_rows.begin();
    const qsizetype common = std::min(m_rows.size(), next.size());
    qsizetype last = common - 1;
    while (last >= first && m_rows.at(last) == next.at(last))
        --last;
    for (qsizetype at = first; at <= last; ++at)
        m_rows[at] = next.at(at);
    if (first <= last)
        emit dataChanged(index(static_cast<int>(first)), index(static_cast<int>(last)));
    if (m_rows.size() > common) {
        beginRemoveRows({}, static_cast<int>(common), count() - 1);
        m_rows.resize(common);
        endRemoveRows();
    } else if (next.size() > common) {
        beginInsertRows({}, static_cast<int>(common), static_cast<int>(next.size() - 1));
        m_rows.append(next.mid(common));
        endInsertRows();
    }
}

} // namespace velto::shell
