// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/appstate.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velto::shell
{

/// What the sections of the program are called, and which of them can be chosen where. Those that
/// no list offers are reached by setting `AppState::selectedSection`.
class Sections final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Sections with a command, at most nine: the key is the position.
    Q_PROPERTY(QList<int> commands READ commands CONSTANT FINAL)
    /// Sections with a row below the history.
    Q_PROPERTY(QList<int> sidebar READ sidebar CONSTANT FINAL)

public:
    using QObject::QObject;

    [[nodiscard]] static QList<int> commands();
    [[nodiscard]] static QList<int> sidebar();
    /// For the user to read.
    Q_INVOKABLE [[nodiscard]] static QString title(velto::chat::AppState::Section section);
    /// The name of its mark.
    Q_INVOKABLE [[nodiscard]] static QString symbol(velto::chat::AppState::Section section);
};

} // namespace velto::shell
