// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractListModel>
#include <QSet>

#include <algorithm>
#include <optional>

namespace velto::service
{

/// A list of records as views see it. Whether there is a list at all is told apart from an empty
/// one.
class RecordListModel : public QAbstractListModel
{
    Q_OBJECT
    /// False until the list was loaded for the first time.
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY isLoadedChanged FINAL)
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    enum Role { RecordRole = Qt::UserRole + 1 /**< "record": the gadget of the row */ };
    Q_ENUM(Role)

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] virtual bool isLoaded() const = 0;
    [[nodiscard]] virtual int count() const = 0;
    [[nodiscard]] virtual QVariant record(int row) const = 0;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void isLoadedChanged();
    void countChanged();
};

/// The list behind it. The service sends lists whole; `assign` turns a new one into the few changes
/// that it is, so that rows which stay keep their delegates, and with them focus and position.
/// `Key` is the member that tells one record from another.
template<typename T, auto Key>
class RecordList final : public RecordListModel
{
public:
    using RecordListModel::RecordListModel;

    [[nodiscard]] const std::optional<QList<T>> &records() const { return m_records; }
    [[nodiscard]] bool isLoaded() const override { return m_records.has_value(); }
    [[nodiscard]] int count() const override
    {
        return m_records ? static_cast<int>(m_records->size()) : 0;
    }
    [[nodiscard]] QVariant record(int row) const override
    {
        return QVariant::fromValue(m_records->at(row));
    }

    /// Absent puts it back to never loaded.
    void assign(std::optional<QList<T>> records)
    {
        const bool wasLoaded = isLoaded();
        const int oldCount = count();
        if (!wasLoaded)
            m_records.emplace();
        become(records.value_or(QList<T>()));
        if (!records)
            m_records.reset();
        if (count() != oldCount)
            emit countChanged();
        if (isLoaded() != wasLoaded)
            emit isLoadedChanged();
    }

private:
    void become(const QList<T> &wanted)
    {
        removeAllBut(wanted);
        for (int row = 0; row < wanted.size(); ++row) {
            const int from = find(wanted[row], row);
            if (from < 0) {
                insert(row, newRowsFrom(wanted, row), wanted);
                continue;
            }
            if (from != row)
                moveUp(from, row);
            if (m_records->at(row) != wanted[row])
                replace(row, wanted[row]);
        }
        remove(static_cast<int>(wanted.size()), count() - static_cast<int>(wanted.size()));
    }

    void removeAllBut(const QList<T> &wanted)
    {
        QSet<KeyType> keys;
        for (const T &record : wanted)
            keys.insert(record.*Key);
        int end = count();
        while (end > 0) {
            int first = end;
            while (first > 0 && !keys.contains(m_records->at(first - 1).*Key))
                --first;
            remove(first, end - first);
            end = first - 1;
        }
    }
    /// How many records from `row` on have no row yet. At least one.
    [[nodiscard]] int newRowsFrom(const QList<T> &wanted, int row) const
    {
        int end = row + 1;
        while (end < wanted.size() && find(wanted[end], row) < 0)
            ++end;
        return end - row;
    }
    /// The row at or after `from` that shows the same thing as `record`, or -1.
    [[nodiscard]] int find(const T &record, int from) const
    {
        const auto begin = m_records->cbegin() + from;
        const auto same = [&](const T &other) { return other.*Key == record.*Key; };
        const auto found = std::find_if(begin, m_records->cend(), same);
        return found == m_records->cend() ? -1 : static_cast<int>(found - m_records->cbegin());
    }

    void insert(int row, int rows, const QList<T> &wanted)
    {
        beginInsertRows({}, row, row + rows - 1);
        for (int i = row; i < row + rows; ++i)
            m_records->insert(i, wanted[i]);
        endInsertRows();
    }
    void remove(int row, int rows)
    {
        if (rows <= 0)
            return;
        beginRemoveRows({}, row, row + rows - 1);
        m_records->remove(row, rows);
        endRemoveRows();
    }
    void moveUp(int from, int to)
    {
        beginMoveRows({}, from, from, {}, to);
        m_records->move(from, to);
        endMoveRows();
    }
    void replace(int row, const T &record)
    {
        (*m_records)[row] = record;
        const QModelIndex changed = index(row);
        emit dataChanged(changed, changed, {RecordRole});
    }

    using KeyType = std::decay_t<decltype(std::declval<const T &>().*Key)>;

    std::optional<QList<T>> m_records;
};

} // namespace velto::service
