// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/recordlist.h"

#include <QAbstractItemModelTester>
#include <QMetaType>
#include <QSignalSpy>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace velto::service
{
namespace
{

struct Row
{
    int id = 0;
    QString text;
    bool operator==(const Row &) const = default;
};

using List = RecordList<Row, &Row::id>;
using Rows = QList<Row>;

Rows rows(const std::vector<std::pair<int, int>> &pairs)
{
    Rows rows;
    for (const auto &[id, version] : pairs)
        rows.append({id, QString::number(version)});
    return rows;
}

/// What a view that only follows the signals would show.
class Follower final : public QObject
{
public:
    explicit Follower(List &list)
        : m_list(list)
    {
        using Model = QAbstractItemModel;
        connect(&list, &Model::rowsInserted, this, [this](const QModelIndex &, int from, int to) {
            for (int row = from; row <= to; ++row)
                shown.insert(row, at(row));
        });
        connect(&list, &Model::rowsRemoved, this, [this](const QModelIndex &, int from, int to) {
            shown.remove(from, to - from + 1);
        });
        connect(&list, &Model::rowsMoved, this,
                [this](const QModelIndex &, int from, int, const QModelIndex &, int to) {
                    shown.move(from, to);
                });
        connect(&list, &Model::dataChanged, this,
                [this](const QModelIndex &index) { shown[index.row()] = at(index.row()); });
    }
    [[nodiscard]] Row at(int row) const
    {
        return m_list.index(row).data(RecordListModel::RecordRole).value<Row>();
    }

    Rows shown;

private:
    List &m_list;
};

RC_GTEST_PROP(RecordList, AnyListBecomesAnyOther, (const std::vector<std::vector<int>> &lists))
{
    List list;
    const QAbstractItemModelTester tester(&list,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    Follower follower(list);
    int version = 0;
    for (const std::vector<int> &ids : lists) {
        Rows wanted;
        // Few ids, so that lists overlap and hold some ids twice; some rows keep their text.
        for (const int id : ids)
            wanted.append({std::abs(id % 12), QString::number(id % 3 == 0 ? 0 : version)});
        list.assign(wanted);
        RC_ASSERT(list.records() == wanted);
        RC_ASSERT(follower.shown == wanted);
        ++version;
    }
    list.assign({});
    RC_ASSERT(!list.isLoaded());
    RC_ASSERT(follower.shown.isEmpty());
}

TEST(RecordList, TellsAnEmptyListFromNone)
{
    List list;
    QSignalSpy loaded(&list, &RecordListModel::isLoadedChanged);
    QSignalSpy count(&list, &RecordListModel::countChanged);
    EXPECT_FALSE(list.isLoaded());
    EXPECT_EQ(list.rowCount(), 0);
    list.assign({});
    EXPECT_EQ(loaded.count(), 0);
    list.assign(Rows());
    EXPECT_TRUE(list.isLoaded());
    EXPECT_EQ(list.records(), Rows());
    EXPECT_EQ(loaded.count(), 1);
    EXPECT_EQ(count.count(), 0);
    list.assign(rows({{1, 1}}));
    EXPECT_EQ(list.count(), 1);
    list.assign({});
    EXPECT_EQ(loaded.count(), 2);
    EXPECT_EQ(count.count(), 2);
}

TEST(RecordList, ShowsARecordUnderItsRole)
{
    List list;
    list.assign(rows({{1, 7}}));
    EXPECT_EQ(list.roleNames().value(RecordListModel::RecordRole), "record");
    EXPECT_EQ(list.index(0).data(RecordListModel::RecordRole).value<Row>().text,
              QStringLiteral("7"));
    EXPECT_FALSE(list.index(0).data(Qt::DisplayRole).isValid());
    EXPECT_FALSE(list.data({}, RecordListModel::RecordRole).isValid());
}

class RecordListChange : public testing::Test
{
protected:
    void SetUp() override { list.assign(rows({{1, 0}, {2, 0}, {3, 0}, {4, 0}})); }

    [[nodiscard]] int changes() const
    {
        return static_cast<int>(inserted.count() + removed.count() + moved.count() +
                                changed.count());
    }

    List list;
    QSignalSpy inserted{&list, &QAbstractItemModel::rowsInserted};
    QSignalSpy removed{&list, &QAbstractItemModel::rowsRemoved};
    QSignalSpy moved{&list, &QAbstractItemModel::rowsMoved};
    QSignalSpy changed{&list, &QAbstractItemModel::dataChanged};
    QSignalSpy reset{&list, &QAbstractItemModel::modelReset};
};

TEST_F(RecordListChange, OfNothingIsNoNews)
{
    inserted.clear();
    list.assign(rows({{1, 0}, {2, 0}, {3, 0}, {4, 0}}));
    EXPECT_EQ(changes(), 0);
}

TEST_F(RecordListChange, OfOneRecordTouchesItsRowAlone)
{
    inserted.clear();
    list.assign(rows({{1, 0}, {2, 0}, {3, 1}, {4, 0}}));
    EXPECT_EQ(changes(), 1);
    EXPECT_EQ(changed.first().first().toModelIndex().row(), 2);
}

TEST_F(RecordListChange, ThatTakesRowsAwayLeavesTheOthers)
{
    inserted.clear();
    list.assign(rows({{1, 0}, {4, 0}}));
    EXPECT_EQ(changes(), 1);
    EXPECT_EQ(removed.count(), 1);
}

TEST_F(RecordListChange, ThatAddsRowsLeavesTheOthers)
{
    inserted.clear();
    list.assign(rows({{1, 0}, {8, 0}, {9, 0}, {2, 0}, {3, 0}, {4, 0}}));
    EXPECT_EQ(changes(), 1);
    EXPECT_EQ(inserted.count(), 1);
}

TEST_F(RecordListChange, OfTheOrderMovesARow)
{
    inserted.clear();
    list.assign(rows({{4, 1}, {1, 0}, {2, 0}, {3, 0}}));
    EXPECT_EQ(moved.count(), 1);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(changes(), 2);
    EXPECT_EQ(reset.count(), 0);
}

TEST_F(RecordListChange, OfEverythingIsOneRemovalAndOneInsertion)
{
    inserted.clear();
    list.assign(rows({{5, 0}, {6, 0}, {7, 0}}));
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(changes(), 2);
}

} // namespace
} // namespace velto::service
