// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/incrementalmarkdown.h"

#include "markdown/model/document.h"
#include "markdown/model/growingtree.h"

#include <QByteArray>

#include <algorithm>
#include <optional>

namespace velto::markdown
{

namespace
{

std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// How many blocks at the front are the same, of the first `most` at most.
qsizetype commonBlocks(const MarkdownContent &a, const MarkdownContent &b, qsizetype most)
{
    const qsizetype count = std::min({a.blocks.size(), b.blocks.size(), most});
    qsizetype same = 0;
    while (same < count && a.blocks[same] == b.blocks[same])
        ++same;
    return same;
}

} // namespace

class IncrementalMarkdown::Private
{
public:
    void append(QStringView text);
    void reset();

    [[nodiscard]] const MarkdownContent &shown() const
    {
        return m_whole ? *m_whole : m_tree->content();
    }
    [[nodiscard]] qsizetype firstChanged() const { return m_firstChanged; }

private:
    QByteArray takeLines(QStringView &text);
    void rebuild();
    void show();

    std::unique_ptr<GrowingTree> m_tree = std::make_unique<GrowingTree>();
    /// Shown instead of the tree's while a definition that may still turn into something else
    /// changes what has settled.
    std::optional<MarkdownContent> m_whole;
    QByteArray m_lines;    // all complete ones, with LF
    QString m_partialLine; // what follows them
    bool m_endedWithReturn = false;
    qsizetype m_firstChanged = 0;
};

/// What `text` completes; the rest is left in it.
QByteArray IncrementalMarkdown::Private::takeLines(QStringView &text)
{
    const auto isLineEnd = [](QChar c) { return c == QLatin1Char('\n') || c == QLatin1Char('\r'); };
    qsizetype end = text.size();
    while (end > 0 && !isLineEnd(text[end - 1]))
        --end;
    if (end == 0)
        return {};
    m_partialLine.append(text.first(end));
    QByteArray lines = m_partialLine.toUtf8();
    m_partialLine.clear();
    m_endedWithReturn = end == text.size() && lines.endsWith('\r');
    if (lines.contains('\r'))
        lines.replace("\r\n", "\n").replace('\r', '\n');
    text = text.sliced(end);
    return lines;
}

void IncrementalMarkdown::Private::append(QStringView text)
{
    if (m_endedWithReturn && !text.isEmpty()) {
        m_endedWithReturn = false;
        if (text.front() == QLatin1Char('\n'))
            text = text.sliced(1);
    }
    if (text.isEmpty()) {
        m_firstChanged = shown().blocks.size();
        return;
    }
    const QByteArray lines = takeLines(text);
    m_partialLine.append(text);
    m_lines.append(lines);
    m_firstChanged = m_tree->settledCount();
    if (m_tree->addLines(view(lines)))
        show();
    else
        rebuild();
}

void IncrementalMarkdown::Private::rebuild()
{
    const auto oldTree = std::exchange(m_tree, std::make_unique<GrowingTree>());
    const MarkdownContent old = m_whole ? *m_whole : oldTree->content();
    m_whole.reset();
    // Into an empty tree, where no definition can come too late.
    if (!m_tree->addLines(view(m_lines)))
        qFatal("a definition came too late for an empty tree");
    show();
    m_firstChanged = commonBlocks(old, shown(), old.blocks.size());
}

void IncrementalMarkdown::Private::show()
{
    const std::optional<MarkdownContent> old = std::exchange(m_whole, std::nullopt);
    const QByteArray line = m_partialLine.toUtf8();
    if (!m_tree->update(view(line))) {
        m_whole.emplace();
        m_whole->blocks = blocksOfText(view(m_lines + line));
        m_firstChanged = commonBlocks(*m_whole, m_tree->content(), m_firstChanged);
    }
    if (old)
        m_firstChanged = commonBlocks(*old, shown(), old->blocks.size());
}

void IncrementalMarkdown::Private::reset()
{
    m_tree = std::make_unique<GrowingTree>();
    m_whole.reset();
    m_lines.clear();
    m_partialLine.clear();
    m_endedWithReturn = false;
}

IncrementalMarkdown::IncrementalMarkdown()
    : d(std::make_unique<Private>())
{}
IncrementalMarkdown::~IncrementalMarkdown() = default;
IncrementalMarkdown::IncrementalMarkdown(IncrementalMarkdown &&) noexcept = default;
IncrementalMarkdown &IncrementalMarkdown::operator=(IncrementalMarkdown &&) noexcept = default;

void IncrementalMarkdown::append(QStringView text)
{
    d->append(text);
}

void IncrementalMarkdown::reset(const QString &text)
{
    d->reset();
    d->append(text);
}

const MarkdownContent &IncrementalMarkdown::content() const
{
    return d->shown();
}
qsizetype IncrementalMarkdown::firstChangedBlock() const
{
    return d->firstChanged();
}

} // namespace velto::markdown
