// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "presentation/code/growingcode.h"

#include <QFutureWatcher>
#include <QObject>

#include <memory>
#include <stop_token>

namespace velto::presentation
{

/// Keeps the tokens of a text that a view shows. A short text is coloured at once, a long one on
/// another thread, so that no frame waits for it; until then the tokens of what the text started
/// with stay. Newer text supersedes what is under way.
class CodeHighlighter final : public QObject
{
    Q_OBJECT

public:
    /// Texts from this size on, in UTF-16 units, are coloured on another thread.
    static constexpr qsizetype longText = 65'536;

    explicit CodeHighlighter(QObject *parent = nullptr);
    ~CodeHighlighter() override;

    /// A text that starts with the last one is taken for its continuation and costs what is new.
    void setCode(const QString &text, const QString &language);

    [[nodiscard]] const TokenRanges &tokens() const { return m_tokens; }
    /// Whether `tokens` are those of the whole text.
    [[nodiscard]] bool isComplete() const { return !m_isRunning; }

signals:
    /// Tokens that start at `from` or later may have changed.
    void tokensChanged(qsizetype from);

private:
    struct Change
    {
        TokenRanges tokens; // from `from` on
        qsizetype from = 0;
    };

    [[nodiscard]] static Change append(GrowingCode &code, QStringView addition);
    void highlightRest();
    void finish();
    void apply(const Change &change);

    QString m_text;
    QString m_language;
    std::shared_ptr<GrowingCode> m_code; // another thread's while m_isRunning
    qsizetype m_handedOver = 0;          // how much of m_text it has or is getting
    bool m_isRunning = false;
    std::stop_source m_stop;
    QFutureWatcher<Change> m_watcher;
    TokenRanges m_tokens;
};

} // namespace velto::presentation
