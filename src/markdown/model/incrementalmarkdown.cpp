// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/incrementalmarkdown.h"

namespace velto::markdown
{

class IncrementalMarkdown::Private
{
public:
    QString text;
    MarkdownContent content;
    qsizetype firstChanged = 0;

    void parse()
    {
        MarkdownContent next(text);
        firstChanged = 0;
        while (firstChanged < next.blocks.size() && firstChanged < content.blocks.size() &&
               next.blocks[firstChanged] == content.blocks[firstChanged])
            ++firstChanged;
        content = std::move(next);
    }
};

IncrementalMarkdown::IncrementalMarkdown()
    : d(std::make_unique<Private>())
{}
IncrementalMarkdown::~IncrementalMarkdown() = default;
IncrementalMarkdown::IncrementalMarkdown(IncrementalMarkdown &&) noexcept = default;
IncrementalMarkdown &IncrementalMarkdown::operator=(IncrementalMarkdown &&) noexcept = default;

void IncrementalMarkdown::append(QStringView text)
{
    d->text.append(text);
    d->parse();
}

void IncrementalMarkdown::reset(const QString &text)
{
    d->text = text;
    d->parse();
}

const MarkdownContent &IncrementalMarkdown::content() const
{
    return d->content;
}
qsizetype IncrementalMarkdown::firstChangedBlock() const
{
    return d->firstChanged;
}

} // namespace velto::markdown
