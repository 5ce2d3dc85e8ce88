// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/markdown.h"
#include "presentation/rows/assistantparts.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// The Markdown of a reply, in the looks of the chat. Shows one text of a message and takes over
/// what is new when it grows.
class MediaMarkdown : public markdown::Markdown
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velto::presentation::AssistantParts *parts READ parts WRITE setParts NOTIFY
                   partsChanged FINAL)
    /// Of `parts`.
    Q_PROPERTY(int row READ row WRITE setRow NOTIFY rowChanged FINAL)

public:
    explicit MediaMarkdown(QQuickItem *parent = nullptr);

    [[nodiscard]] AssistantParts *parts() const { return m_parts; }
    void setParts(AssistantParts *parts);
    [[nodiscard]] int row() const { return m_row; }
    void setRow(int row);

signals:
    void partsChanged();
    void rowChanged();

protected:
    void classBegin() override;
    void componentComplete() override;

private:
    void takeText();

    QPointer<AssistantParts> m_parts;
    int m_row = -1;
    qsizetype m_length = 0; ///< UTF-16 units of the source that are shown.
};

} // namespace velto::presentation
