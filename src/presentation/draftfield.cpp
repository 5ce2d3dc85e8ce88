// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/draftfield.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQuickTextDocument>
#include <QScopedValueRollback>
#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace velto::presentation
{

namespace
{

// Not toPlainText, which makes blanks of no-break spaces.
QString textOf(const QTextDocument &document)
{
    QString text = document.toRawText();
    std::ranges::replace_if(
        text,
        [](QChar character) {
            return character == QChar::ParagraphSeparator || character == QChar::LineSeparator;
        },
        QChar(u'\n'));
    return text;
}

bool holdsLongWord(const QString &text)
{
    constexpr int longest = 2000;
    int length = 0;
    return std::ranges::any_of(text, [&length](QChar character) {
        length = character.isSpace() ? 0 : length + 1;
        return length > longest;
    });
}

} // namespace

void DraftField::expectPaste(bool selection)
{
    const auto mode = selection ? QClipboard::Selection : QClipboard::Clipboard;
    setLongWords(m_hasLongWords || holdsLongWord(QGuiApplication::clipboard()->text(mode)));
}

void DraftField::setLongWords(bool hasLongWords)
{
    if (m_hasLongWords == hasLongWords)
        return;
    m_hasLongWords = hasLongWords;
    emit hasLongWordsChanged();
}

void DraftField::setInput(QQuickItem *input)
{
    if (m_input == input)
        return;
    if (m_document != nullptr)
        m_document->disconnect(this);
    m_input = input;
    const auto *document =
        input == nullptr ? nullptr : input->property("textDocument").value<QQuickTextDocument *>();
    m_document = document == nullptr ? nullptr : document->textDocument();
    if (m_document != nullptr) {
        connect(m_document, &QTextDocument::contentsChanged, this, &DraftField::noteEdit);
        show({});
    }
    emit inputChanged();
}

void DraftField::setDraft(const QString &draft)
{
    if (m_draft == draft)
        return;
    const QString before = std::exchange(m_draft, draft);
    if (m_document != nullptr)
        show(before);
    emit draftChanged();
}

void DraftField::show(const QString &before)
{
    const QScopedValueRollback showing(m_isShowing, true);
    const bool willHaveLongWords = holdsLongWord(m_draft);
    setLongWords(m_hasLongWords || willHaveLongWords); // the old text is still there
    if (!before.isEmpty() && m_draft.startsWith(before)) {
        const int end = m_document->characterCount() - 1;
        QMetaObject::invokeMethod(m_input, "insert", Q_ARG(int, end),
                                  Q_ARG(QString, m_draft.mid(before.size())));
    } else {
        m_input->setProperty("text", m_draft);
        m_input->setProperty("cursorPosition", m_document->characterCount() - 1);
    }
    setLongWords(willHaveLongWords);
}

void DraftField::noteEdit()
{
    if (m_isShowing)
        return;
    const QString text = textOf(*m_document);
    if (m_draft == text)
        return;
    m_draft = text;
    setLongWords(holdsLongWord(text));
    emit draftChanged();
    emit edited(text);
}

} // namespace velto::presentation
