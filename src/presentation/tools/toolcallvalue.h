// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/message.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// The states of a tool call under their QML names.
namespace ToolCallState
{
Q_NAMESPACE
QML_ELEMENT

enum State { Running, Completed, Failed };
Q_ENUM_NS(State)
} // namespace ToolCallState

/// A tool call as QML reads it.
class ToolCallValue
{
    Q_GADGET
    QML_VALUE_TYPE(toolCall)
    Q_PROPERTY(QString callID READ callID CONSTANT FINAL)
    Q_PROPERTY(QString name READ name CONSTANT FINAL)
    Q_PROPERTY(QString inputJSON READ inputJSON CONSTANT FINAL)
    Q_PROPERTY(QString outputJSON READ outputJSON CONSTANT FINAL)
    /// An error may have no text.
    Q_PROPERTY(bool hasError READ hasError CONSTANT FINAL)
    Q_PROPERTY(QString errorText READ errorText CONSTANT FINAL)
    /// One of `ToolCallState`.
    Q_PROPERTY(int state READ state CONSTANT FINAL)

public:
    ToolCallValue() = default;
    explicit ToolCallValue(chat::ToolCall call)
        : m_call(std::move(call))
    {}

    [[nodiscard]] QString callID() const { return m_call.callID; }
    [[nodiscard]] QString name() const { return m_call.name; }
    [[nodiscard]] QString inputJSON() const { return m_call.inputJSON; }
    [[nodiscard]] QString outputJSON() const { return m_call.outputJSON; }
    [[nodiscard]] bool hasError() const { return m_call.errorText.has_value(); }
    [[nodiscard]] QString errorText() const { return m_call.errorText.value_or(QString()); }
    [[nodiscard]] int state() const
    {
        switch (m_call.state) {
        case chat::ToolState::Running:
            return ToolCallState::Running;
        case chat::ToolState::Completed:
            return ToolCallState::Completed;
        case chat::ToolState::Failed:
            break;
        }
        return ToolCallState::Failed;
    }

    bool operator==(const ToolCallValue &) const = default;

private:
    chat::ToolCall m_call;
};

} // namespace velto::presentation
