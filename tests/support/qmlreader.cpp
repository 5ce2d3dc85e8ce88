// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "support/qmlreader.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlExpression>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace velto::test
{

QmlReader::QmlReader(QObject &store)
    : m_store(store)
{
    QQmlEngine::setObjectOwnership(&store, QQmlEngine::CppOwnership);
    m_engine.rootContext()->setContextProperty(QStringLiteral("store"), &store);
}

QmlReader::~QmlReader()
{
    // Bindings go before what they look at.
    while (!m_objects.empty())
        m_objects.pop_back();
}

void QmlReader::note(const QString &expression)
{
    static const QRegularExpression name(QStringLiteral("store\\.(\\w+)"));
    for (auto found = name.globalMatch(expression); found.hasNext();)
        m_used.insert(found.next().captured(1));
}

QVariant QmlReader::evaluate(const QString &expression, bool *isUndefined)
{
    note(expression);
    QQmlExpression asked(m_engine.rootContext(), nullptr, expression);
    const QVariant value = asked.evaluate(isUndefined);
    EXPECT_FALSE(asked.hasError()) << qPrintable(asked.error().toString());
    return value;
}

QJsonValue QmlReader::read(const QString &expression)
{
    bool isUndefined = false;
    const QVariant value = evaluate(expression, &isUndefined);
    return isUndefined ? QJsonValue(QJsonValue::Undefined) : QJsonValue::fromVariant(value);
}

void QmlReader::run(const QString &expression)
{
    evaluate(expression);
}

void QmlReader::expectSame(const QString &expression, const QJsonValue &json,
                           const QStringList &computed)
{
    if (json.isObject()) {
        const QMetaObject *record = evaluate(expression).metaType().metaObject();
        ASSERT_NE(record, nullptr) << qPrintable(expression);
        const QJsonObject object = json.toObject();
        for (int i = 0; i < record->propertyCount(); ++i) {
            const QString name = QString::fromLatin1(record->property(i).name());
            EXPECT_TRUE(object.contains(name) || computed.contains(name))
                << qPrintable(expression + u'.' + name);
        }
        for (auto it = object.begin(); it != object.end(); ++it)
            expectSame(expression + u'.' + it.key(), it.value(), computed);
    } else if (json.isArray()) {
        const QJsonArray array = json.toArray();
        EXPECT_EQ(read(expression + QStringLiteral(".length")), QJsonValue(array.size()))
            << qPrintable(expression);
        for (qsizetype i = 0; i < array.size(); ++i)
            expectSame(QStringLiteral("%1[%2]").arg(expression).arg(i), array[i], computed);
    } else {
        EXPECT_EQ(read(expression), json) << qPrintable(expression);
    }
}

QObject *QmlReader::create(const QString &qml)
{
    QQmlComponent component(&m_engine);
    component.setData(qml.toUtf8(), QUrl());
    m_objects.emplace_back(component.create());
    EXPECT_NE(m_objects.back(), nullptr) << qPrintable(component.errorString());
    return m_objects.back().get();
}

void QmlReader::showRows(const QString &name)
{
    m_used.insert(name);
    QObject *const view = create(QStringLiteral("import QtQml\n"
                                                "import QtQml.Models\n"
                                                "Instantiator {\n"
                                                "    model: store.%1\n"
                                                "    delegate: QtObject {\n"
                                                "        required property var record\n"
                                                "    }\n"
                                                "    function row(i) {\n"
                                                "        return objectAt(i).record\n"
                                                "    }\n"
                                                "}\n")
                                     .arg(name));
    m_engine.rootContext()->setContextProperty(name + QStringLiteral("View"), view);
}

QObject *QmlReader::bind(const QString &expression)
{
    note(expression);
    return create(
        QStringLiteral("import QtQml\nQtObject { property var value: %1 }\n").arg(expression));
}

QStringList QmlReader::unusedProperties() const
{
    QStringList names;
    const QMetaObject *const type = m_store.metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < type->propertyCount(); ++i)
        names.append(QString::fromLatin1(type->property(i).name()));
    names.removeIf([this](const QString &name) { return m_used.contains(name); });
    return names;
}

QStringList QmlReader::unusedMethods() const
{
    QStringList names;
    const QMetaObject *const type = m_store.metaObject();
    for (int i = QObject::staticMetaObject.methodCount(); i < type->methodCount(); ++i) {
        if (type->method(i).methodType() == QMetaMethod::Method)
            names.append(QString::fromLatin1(type->method(i).name()));
    }
    names.removeIf([this](const QString &name) { return m_used.contains(name); });
    return names;
}

} // namespace velto::test
