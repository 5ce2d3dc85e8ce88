// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/appstate.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace velto::shell
{

/// The title that a rename asks for: what was written, without the blanks and line breaks around
/// it. Absent when that is nothing, or the title that the conversation has.
[[nodiscard]] std::optional<QString> renamedTitle(const std::optional<QString> &title,
                                                  const QString &written);

/// What is asked before a conversation is deleted. Names it by its title alone.
[[nodiscard]] QString deletionMessage(const service::ConversationSummary &conversation);

/// The address under which this program opens a conversation.
[[nodiscard]] QString conversationLink(const QString &conversationID);

/// Renaming and deleting conversations of the history, from the first click to the request. Main
/// thread.
class HistoryEditing : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velto::chat::AppState *appState READ appState WRITE setAppState NOTIFY
                   appStateChanged REQUIRED FINAL)
    /// The conversation that is being renamed; null when none is.
    Q_PROPERTY(QString renamingID READ renamingID NOTIFY renamingIDChanged FINAL)
    /// What is written in place of its title.
    Q_PROPERTY(QString renameBuffer READ renameBuffer WRITE setRenameBuffer NOTIFY
                   renameBufferChanged FINAL)
    /// Whether a deletion waits for an answer.
    Q_PROPERTY(bool isDeleting READ isDeleting NOTIFY deletingChanged FINAL)
    Q_PROPERTY(QString deletionMessage READ deletionMessage NOTIFY deletingChanged FINAL)

public:
    using QObject::QObject;

    [[nodiscard]] chat::AppState *appState() const { return m_appState; }
    void setAppState(chat::AppState *appState);
    [[nodiscard]] const QString &renamingID() const { return m_renamingID; }
    [[nodiscard]] const QString &renameBuffer() const { return m_renameBuffer; }
    void setRenameBuffer(const QString &text);
    [[nodiscard]] bool isDeleting() const { return m_deleting.has_value(); }
    [[nodiscard]] QString deletionMessage() const;

    Q_INVOKABLE void beginRename(const QString &conversationID);
    Q_INVOKABLE void commitRename();
    Q_INVOKABLE void cancelRename();
    Q_INVOKABLE void askToDelete(const QString &conversationID);
    Q_INVOKABLE void confirmDeletion();
    Q_INVOKABLE void cancelDeletion();
    Q_INVOKABLE [[nodiscard]] static QString link(const QString &conversationID);

signals:
    void appStateChanged();
    void renamingIDChanged();
    void renameBufferChanged();
    void deletingChanged();

private:
    [[nodiscard]] std::optional<service::ConversationSummary> find(const QString &id) const;
    void setRenamingID(const QString &id);

    QPointer<chat::AppState> m_appState;
    QString m_renamingID;
    QString m_renameBuffer;
    std::optional<service::ConversationSummary> m_deleting;
};

} // namespace velto::shell
