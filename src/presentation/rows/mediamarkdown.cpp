// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/mediamarkdown.h"

#include "presentation/mediaviews/veltomediaimageprovider.h"
#include "presentation/rows/chattheme.h"

#include <QQmlEngine>

namespace velto::presentation
{

MediaMarkdown::MediaMarkdown(QQuickItem *parent)
    : Markdown(parent)
{
    setTheme(chatTheme());
    setCodeSyntaxHighlighter(chatHighlighter());
}

void MediaMarkdown::classBegin()
{
    Markdown::classBegin();
    QQmlEngine *engine = qmlEngine(this);
    if (engine == nullptr)
        return;
    // One for all replies of an engine, and gone with it.
    static const QString name = QStringLiteral("velto.mediaImageProvider");
    auto *provider = engine->findChild<VeltoMediaImageProvider *>(name, Qt::FindDirectChildrenOnly);
    if (provider == nullptr) {
        provider = new VeltoMediaImageProvider(engine);
        provider->setObjectName(name);
    }
    setImageProvider(provider);
}

void MediaMarkdown::setParts(AssistantParts *parts)
{
    if (m_parts == parts)
        return;
    if (m_parts != nullptr)
        m_parts->disconnect(this);
    m_parts = parts;
    if (parts != nullptr) {
        connect(parts, &AssistantParts::textGrew, this, [this](int row) {
            if (row == m_row)
                takeText();
        });
        connect(parts, &AssistantParts::textChanged, this, [this](int row) {
            if (row != m_row)
                return;
            if (!m_parts->text(row).startsWith(text()))
                m_length = 0;
            takeText();
        });
    }
    emit partsChanged();
    m_length = 0;
    takeText();
}

void MediaMarkdown::setRow(int row)
{
    if (m_row == row)
        return;
    m_row = row;
    emit rowChanged();
    m_length = 0;
    takeText();
}

void MediaMarkdown::componentComplete()
{
    takeText();
    Markdown::componentComplete();
}

void MediaMarkdown::takeText()
{
    if (m_parts == nullptr || m_row < 0)
        return;
    const QStringView source = m_parts->text(m_row);
    if (m_length == 0 || source.size() < m_length)
        setText(source.isEmpty() ? QStringLiteral(" ") : source.toString());
    else
        append(source.sliced(m_length).toString());
    m_length = source.size();
}

} // namespace velto::presentation
