// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/codesyntaxhighlighter.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace velto::markdown
{

namespace
{

qsizetype commonLength(const QString &a, const QString &b)
{
    return std::mismatch(a.cbegin(), a.cend(), b.cbegin(), b.cend()).first - a.cbegin();
}

/// Asks for the whole text each time and finds out what is different.
class WholeHighlight final : public CodeHighlight
{
public:
    WholeHighlight(const CodeSyntaxHighlighter &highlighter, std::optional<QString> language,
                   TextAttributes attributes)
        : m_highlighter(highlighter)
        , m_language(std::move(language))
        , m_attributes(std::move(attributes))
    {}

    qsizetype grow(const QString &code) override
    {
        const AttributedString before =
            std::exchange(m_text, m_highlighter.highlightCode(code, m_language, m_attributes));
        m_plainText = m_text.plainText();
        m_starts.clear();
        qsizetype start = 0;
        for (const TextRun &run : m_text.runs()) {
            m_starts.push_back(start);
            start += run.text.size();
        }
        return firstDifference(before.runs(), m_text.runs());
    }

    const QString &text() const override { return m_plainText; }

    AttributedString part(qsizetype from, qsizetype to) const override
    {
        AttributedString text;
        const auto behind = std::upper_bound(m_starts.cbegin(), m_starts.cend(), from);
        for (qsizetype at = behind - m_starts.cbegin() - 1; at >= 0 && at < m_text.runs().size();
             ++at) {
            const qsizetype start = m_starts[static_cast<std::size_t>(at)];
            if (start >= to)
                break;
            const TextRun &run = m_text.runs()[at];
            const qsizetype first = std::max(from - start, qsizetype(0));
            text.append(run.text.mid(first, to - start - first), run.attributes);
        }
        return text;
    }

private:
    [[nodiscard]] static qsizetype firstDifference(const QList<TextRun> &before,
                                                   const QList<TextRun> &after)
    {
        qsizetype length = 0;
        const qsizetype common = std::min(before.size(), after.size());
        for (qsizetype at = 0; at < common; ++at) {
            if (before[at].attributes != after[at].attributes)
                return length;
            if (before[at].text != after[at].text)
                return length + commonLength(before[at].text, after[at].text);
            length += before[at].text.size();
        }
        return length;
    }

    const CodeSyntaxHighlighter &m_highlighter;
    const std::optional<QString> m_language;
    const TextAttributes m_attributes;
    AttributedString m_text;
    QString m_plainText;
    std::vector<qsizetype> m_starts; ///< Of the runs.
};

class PlainHighlight final : public CodeHighlight
{
public:
    explicit PlainHighlight(TextAttributes attributes)
        : m_attributes(std::move(attributes))
    {}

    qsizetype grow(const QString &code) override { return std::exchange(m_code, code).size(); }
    const QString &text() const override { return m_code; }

    AttributedString part(qsizetype from, qsizetype to) const override
    {
        AttributedString text;
        text.append(m_code.mid(from, to - from), m_attributes);
        return text;
    }

private:
    const TextAttributes m_attributes;
    QString m_code;
};

} // namespace

std::unique_ptr<CodeHighlight>
CodeSyntaxHighlighter::highlight(const std::optional<QString> &language,
                                 const TextAttributes &attributes) const
{
    return std::make_unique<WholeHighlight>(*this, language, attributes);
}

AttributedString
PlainTextCodeSyntaxHighlighter::highlightCode(const QString &code, const std::optional<QString> &,
                                              const TextAttributes &attributes) const
{
    AttributedString text;
    text.append(code, attributes);
    return text;
}

std::unique_ptr<CodeHighlight>
PlainTextCodeSyntaxHighlighter::highlight(const std::optional<QString> &,
                                          const TextAttributes &attributes) const
{
    return std::make_unique<PlainHighlight>(attributes);
}

} // namespace velto::markdown
