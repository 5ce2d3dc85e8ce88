// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/json.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace velto::test
{

template<typename T>
[[nodiscard]] base::Result<T> decoded(const QByteArray &document)
{
    return base::json::decode<T>(document, base::json::Keys::Snake);
}

/// A document with `fields`, each "name:json" or, for a text with its own name as value, "name".
[[nodiscard]] inline QByteArray documentOf(const QList<QByteArray> &fields, bool snake = false)
{
    QByteArrayList members;
    for (const QByteArray &field : fields) {
        const qsizetype colon = field.indexOf(':');
        const QByteArray name = colon < 0 ? field : field.left(colon);
        const QByteArray value = colon < 0 ? '"' + field + '"' : field.mid(colon + 1);
        const QString key = QString::fromLatin1(name);
        members.append('"' + (snake ? base::json::toSnakeCase(key) : key).toLatin1() +
                       "\":" + value);
    }
    return '{' + members.join(',') + '}';
}

/// Checks that a record has these fields and no others, that each `required` one is missed when it
/// is absent and that each `optional` one may be absent or null; in both spellings of the keys.
template<typename T>
void expectFields(const QList<QByteArray> &required, const QList<QByteArray> &optional)
{
    const QList<QByteArray> all = required + optional;
    const QByteArray whole = documentOf(all);
    const base::Result<T> full = decoded<T>(whole);
    ASSERT_TRUE(full) << whole.constData() << base::description(full.error()).toStdString();
    EXPECT_EQ(decoded<T>(documentOf(all, true)), full);
    // Written again it is what it was: each field of the record was in the document.
    const QByteArray written = base::json::encode(*full, base::json::Keys::Plain).value();
    EXPECT_EQ(QJsonDocument::fromJson(written).object(), QJsonDocument::fromJson(whole).object());

    for (const QByteArray &field : required) {
        QList<QByteArray> rest = all;
        rest.removeOne(field);
        EXPECT_FALSE(decoded<T>(documentOf(rest))) << "without " << field.constData();
    }
    QList<QByteArray> nothing = required;
    for (const QByteArray &field : optional)
        nothing.append(field.split(':').first() + ":null");
    EXPECT_TRUE(decoded<T>(documentOf(nothing)));
    EXPECT_EQ(decoded<T>(documentOf(nothing)), decoded<T>(documentOf(required)));
    EXPECT_EQ(decoded<T>(documentOf(required)) == full, optional.isEmpty());
}

} // namespace velto::test
