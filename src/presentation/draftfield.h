// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

class QTextDocument;

namespace velto::presentation
{

/// Keeps a field's text and a draft that others change too the same.
///
/// What is added to the end of the draft is added to the field, where it can be undone; any other
/// change replaces the text, and nothing of the old one comes back. A draft that nobody has edited
/// stays exactly as it was given, whatever a field makes of its line endings.
class DraftField : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// The TextEdit, once it is complete: till then it has no text of its own.
    Q_PROPERTY(QQuickItem *input READ input WRITE setInput NOTIFY inputChanged FINAL)
    Q_PROPERTY(QString draft READ draft WRITE setDraft NOTIFY draftChanged REQUIRED FINAL)
    /// Something in the text is so long that looking for a place to break it would take minutes:
    /// the field has to break lines anywhere.
    Q_PROPERTY(bool hasLongWords READ hasLongWords NOTIFY hasLongWordsChanged FINAL)

public:
    using QObject::QObject;

    [[nodiscard]] bool hasLongWords() const { return m_hasLongWords; }
    /// What the clipboard holds, or the selection that the middle button pastes, is about to come.
    Q_INVOKABLE void expectPaste(bool selection);

    [[nodiscard]] QQuickItem *input() const { return m_input; }
    void setInput(QQuickItem *input);
    [[nodiscard]] const QString &draft() const { return m_draft; }
    void setDraft(const QString &draft);

signals:
    void inputChanged();
    void draftChanged();
    void hasLongWordsChanged();
    /// The user has changed the text to this.
    void edited(const QString &text);

private:
    void show(const QString &before);
    void noteEdit();
    void setLongWords(bool hasLongWords);

    QPointer<QQuickItem> m_input;
    QPointer<QTextDocument> m_document;
    QString m_draft;
    bool m_hasLongWords = false;
    bool m_isShowing = false; ///< The change of the field is ours.
};

} // namespace velto::presentation
