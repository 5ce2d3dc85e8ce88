// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonValue>
#include <QObject>
#include <QQmlEngine>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace velto::test
{

/// A store as QML sees it, where it is called `store`.
class QmlReader final
{
public:
    explicit QmlReader(QObject &store);
    ~QmlReader();

    /// What the expression gives; undefined and null are told apart.
    [[nodiscard]] QJsonValue read(const QString &expression);
    /// Evaluates the expression for what it does.
    void run(const QString &expression);
    /// Checks that the expression is this JSON, member by member. Where it is a record, each of its
    /// properties has to be in the JSON, but for the `computed` ones.
    void expectSame(const QString &expression, const QJsonValue &json,
                    const QStringList &computed = {});

    /// Shows the store's list `name` in a view: `<name>View.row(0)` gives the record in the first
    /// row.
    void showRows(const QString &name);
    /// An object whose property `value` is bound to the expression.
    [[nodiscard]] QObject *bind(const QString &expression);

    /// What of the store no expression has named so far.
    [[nodiscard]] QStringList unusedProperties() const;
    [[nodiscard]] QStringList unusedMethods() const;

private:
    /// Remembers what of the store the expression names.
    void note(const QString &expression);
    QVariant evaluate(const QString &expression, bool *isUndefined = nullptr);
    [[nodiscard]] QObject *create(const QString &qml);

    QObject &m_store;
    QQmlEngine m_engine;
    std::vector<std::unique_ptr<QObject>> m_objects;
    QSet<QString> m_used;
};

} // namespace velto::test
