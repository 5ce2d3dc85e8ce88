// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/appstate.h"
#include "chat/authstatus.h"
#include "chat/messagelistmodel.h"

#include <QQmlEngine>

/// The chat engine's types under their QML names. The engine itself knows nothing of QML.
namespace velto::presentation
{

struct AppStateType
{
    Q_GADGET
    QML_FOREIGN(velto::chat::AppState)
    QML_NAMED_ELEMENT(AppState)
    QML_UNCREATABLE("The program makes the one AppState.")
};

struct MessageListModelType
{
    Q_GADGET
    QML_FOREIGN(velto::chat::MessageListModel)
    QML_NAMED_ELEMENT(MessageListModel)
    QML_UNCREATABLE("AppState owns the messages.")
};

namespace AuthStatusType
{
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(velto::chat::AuthStatus)
QML_NAMED_ELEMENT(AuthStatus)
} // namespace AuthStatusType

} // namespace velto::presentation
