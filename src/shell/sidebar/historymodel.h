// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/appstate.h"
#include "shell/sidebar/conversationfilter.h"
#include "shell/sidebar/historybuckets.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace velto::shell
{

/// The history as a list: the conversations that match the query, the newest bucket first. The
/// first row of a bucket has its label.
///
/// A change of the history touches only the rows that differ, so a view stays where it is; another
/// query puts other conversations into the rows that are there, which makes no view items anew.
/// When a day ends, rows go to the bucket they then belong to. Main thread.
class HistoryModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velto::chat::AppState *appState READ appState WRITE setAppState NOTIFY
                   appStateChanged REQUIRED FINAL)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged FINAL)
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)
    /// What stands in place of rows; empty while there are some.
    Q_PROPERTY(QString placeholder READ placeholder NOTIFY placeholderChanged FINAL)

public:
    enum Role { ConversationIDRole = Qt::UserRole, TitleRole, BucketLabelRole };
    using Clock = std::function<QDateTime()>;

    explicit HistoryModel(QObject *parent = nullptr);

    [[nodiscard]] chat::AppState *appState() const { return m_appState; }
    void setAppState(chat::AppState *appState);
    [[nodiscard]] const QString &query() const { return m_query; }
    void setQuery(const QString &query);
    [[nodiscard]] int count() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] const QString &placeholder() const { return m_placeholder; }

    /// Another clock than the system's.
    void setClock(Clock clock);

    /// The row of a conversation, -1 when it isn't shown.
    Q_INVOKABLE [[nodiscard]] int rowOf(const QString &conversationID) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void appStateChanged();
    void queryChanged();
    void countChanged();
    void placeholderChanged();

private:
    /// What is known of a conversation without looking at its texts again.
    struct Entry
    {
        QString id;
        QString title;
        SearchableTexts texts;
        qint64 began;
    };
    struct Row
    {
        QString id;
        QString title;
        QString bucketLabel;

        bool operator==(const Row &) const = default;
    };

    void readConversations();
    /// Groups again, since another day may have begun.
    void regroup();
    void waitForNextChange();
    [[nodiscard]] QList<Row> rows() const;
    void updatePlaceholder();

    /// Turns the rows into `next` by as few changes as there are differences, if those are few.
    void merge(const QList<Row> &next);
    /// Lets the rows that are there show `next`; only at the end rows come or go.
    void overwrite(const QList<Row> &next);
    /// How many stretches of rows went, and none beyond what is worth it.
    int removeRowsWithout(const QList<Row> &next);
    /// Puts row `at` of `next` there: from further below, or from nowhere with those behind it that
    /// are as new.
    void bring(const QList<Row> &next, qsizetype at, const QSet<QString> &known);

    QPointer<chat::AppState> m_appState;
    QString m_query;
    QString m_placeholder;
    Clock m_clock;
    QTimer m_timer;
    QList<Entry> m_entries;
    QList<Row> m_rows;
};

} // namespace velto::shell
