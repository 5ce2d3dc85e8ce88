// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/markdown.h"

#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// One block of code and nothing else, drawn like the code of a reply. However long it is, only
/// what shows is laid out.
class ToolCode : public markdown::Markdown
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString code READ code WRITE setCode NOTIFY codeChanged FINAL)
    /// Empty for code that isn't coloured.
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY codeChanged FINAL)
    /// In red, and never coloured.
    Q_PROPERTY(bool isError READ isError WRITE setError NOTIFY codeChanged FINAL)

public:
    explicit ToolCode(QQuickItem *parent = nullptr);

    [[nodiscard]] QString code() const { return m_code; }
    void setCode(const QString &code);
    [[nodiscard]] QString language() const { return m_language; }
    void setLanguage(const QString &language);
    [[nodiscard]] bool isError() const { return m_isError; }
    void setError(bool isError);

signals:
    void codeChanged();

protected:
    void componentComplete() override;

private:
    void show();

    QString m_code;
    QString m_language;
    bool m_isError = false;
};

} // namespace velto::presentation
