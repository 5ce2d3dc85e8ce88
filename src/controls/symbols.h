// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace velto::controls
{

/// The icon vocabulary: names as screens use them, glyphs of the icon font that is compiled in.
class Symbols : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    /// Family of the icon font. The first read loads it; empty when that failed.
    Q_PROPERTY(QString family READ family CONSTANT FINAL)

public:
    using QObject::QObject;

    [[nodiscard]] static QString family();
    /// One character of the icon font. Empty, with a warning, for a name that isn't in the table.
    Q_INVOKABLE static QString glyph(const QString &name);
    /// What stands in the middle of the glyph, as the letter in a lettered circle. Mostly empty.
    Q_INVOKABLE static QString letter(const QString &name);
    [[nodiscard]] static QStringList names();
};

} // namespace velto::controls
