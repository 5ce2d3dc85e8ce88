// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/codehighlighter.h"

#include <QtConcurrentRun>

#include <utility>

namespace velto::presentation
{
namespace
{

TokenRanges::const_iterator firstFrom(const TokenRanges &tokens, qsizetype from)
{
    return std::ranges::lower_bound(tokens, from, {},
                                    [](const TokenRange &token) { return token.range.start; });
}

} // namespace

CodeHighlighter::CodeHighlighter(QObject *parent)
    : QObject(parent)
{
    connect(&m_watcher, &QFutureWatcherBase::finished, this, &CodeHighlighter::finish);
}

CodeHighlighter::~CodeHighlighter()
{
    m_stop.request_stop();
}

void CodeHighlighter::setCode(const QString &text, const QString &language)
{
    const bool continues = m_code != nullptr && language == m_language && text.startsWith(m_text);
    m_text = text;
    m_language = language;
    if (!continues) {
        m_stop.request_stop();
        m_stop = {};
        m_isRunning = false;
        m_code = std::make_shared<GrowingCode>(language);
        m_handedOver = 0;
        apply({});
    }
    if (!m_isRunning && m_handedOver < m_text.size())
        highlightRest();
}

CodeHighlighter::Change CodeHighlighter::append(GrowingCode &code, QStringView addition)
{
    const qsizetype from = code.append(addition);
    return {{firstFrom(code.tokens(), from), code.tokens().cend()}, from};
}

void CodeHighlighter::highlightRest()
{
    const QStringView addition = QStringView(m_text).sliced(m_handedOver);
    m_handedOver = m_text.size();
    if (m_text.size() < longText) {
        apply(append(*m_code, addition));
        return;
    }
    m_isRunning = true;
    const auto job = [code = m_code, copy = addition.toString(), stop = m_stop.get_token()] {
        return stop.stop_requested() ? Change() : append(*code, copy);
    };
    m_watcher.setFuture(QtConcurrent::run(job));
}

void CodeHighlighter::finish()
{
    if (!m_isRunning)
        return; // superseded after it had finished; starting another job drops it as well
    m_isRunning = false;
    const Change change = m_watcher.result();
    if (m_handedOver < m_text.size())
        highlightRest();
    apply(change);
}

void CodeHighlighter::apply(const Change &change)
{
    m_tokens.erase(firstFrom(m_tokens, change.from), m_tokens.cend());
    m_tokens.insert(m_tokens.end(), change.tokens.begin(), change.tokens.end());
    emit tokensChanged(change.from);
}

} // namespace velto::presentation
