// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/rows/relativetimestamp.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// Times of messages as text, for QML.
class Timestamps final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE [[nodiscard]] static QString relative(const QDateTime &date)
    {
        return relativeTimestamp(date, QDateTime::currentDateTime());
    }
    Q_INVOKABLE [[nodiscard]] static QString shortForm(const QDateTime &date)
    {
        return shortTimestamp(date);
    }
};

} // namespace velto::presentation
