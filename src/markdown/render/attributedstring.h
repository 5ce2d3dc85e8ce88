// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/theme/textattributes.h"

#include <QList>
#include <QString>

namespace velto::markdown
{

/// A stretch of text with one look, or one picture in the line.
struct TextRun
{
    QString text;
    TextAttributes attributes;
    /// Not empty for a picture, which stands for one character: its source as written.
    QString image;

    bool operator==(const TextRun &) const = default;
};

/// Text whose stretches carry attributes. A line feed breaks the line within the paragraph.
class AttributedString final
{
public:
    void append(const QString &text, const TextAttributes &attributes);
    void appendImage(const QString &source, const TextAttributes &attributes);

    [[nodiscard]] const QList<TextRun> &runs() const { return m_runs; }
    [[nodiscard]] bool isEmpty() const { return m_runs.isEmpty(); }
    [[nodiscard]] qsizetype length() const;
    [[nodiscard]] QString plainText() const;

    bool operator==(const AttributedString &) const = default;

private:
    QList<TextRun> m_runs;
};

} // namespace velto::markdown
