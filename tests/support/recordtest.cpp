// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "support/recordtest.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace velto::test
{
namespace
{

QByteArray documentOf(const QList<QByteArray> &fields, bool snake = false)
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

} // namespace

void expectFields(RoundTrip throughRecord, const QList<QByteArray> &required,
                  const QList<QByteArray> &optional)
{
    const QList<QByteArray> all = required + optional;
    const QByteArray whole = documentOf(all);
    const QByteArray written = throughRecord(whole);
    ASSERT_FALSE(written.isNull()) << whole.constData();
    EXPECT_EQ(throughRecord(documentOf(all, true)), written);
    // Written again it is what it was: each field of the record was in the document.
    EXPECT_EQ(QJsonDocument::fromJson(written).object(), QJsonDocument::fromJson(whole).object());

    for (const QByteArray &field : required) {
        QList<QByteArray> rest = all;
        rest.removeOne(field);
        EXPECT_TRUE(throughRecord(documentOf(rest)).isNull()) << "without " << field.constData();
    }
    QList<QByteArray> nothing = required;
    for (const QByteArray &field : optional)
        nothing.append(field.split(':').first() + ":null");
    const QByteArray bare = throughRecord(documentOf(required));
    EXPECT_FALSE(bare.isNull());
    EXPECT_EQ(throughRecord(documentOf(nothing)), bare);
    EXPECT_EQ(QJsonDocument::fromJson(bare).object(),
              QJsonDocument::fromJson(documentOf(required)).object());
}

} // namespace velto::test
