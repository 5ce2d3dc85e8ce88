// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velto::controls
{

/// The desktop's clipboard. Main thread.
class Clipboard final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Replaces what is there by a plain text.
    Q_INVOKABLE static void copy(const QString &text);
};

} // namespace velto::controls
