// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/markdowncontent.h"

#include <memory>

namespace velto::markdown
{

/// The blocks of a text that grows. After every call `content()` equals `MarkdownContent(text)` of
/// all that was appended, however it was cut.
class IncrementalMarkdown final
{
public:
    IncrementalMarkdown();
    ~IncrementalMarkdown();
    IncrementalMarkdown(IncrementalMarkdown &&other) noexcept;
    IncrementalMarkdown &operator=(IncrementalMarkdown &&other) noexcept;

    void append(QStringView text);
    /// Forgets everything and starts anew with `text`.
    void reset(const QString &text = {});

    /// Valid until the next call. A copy is cheap, but while it lives the next append has to copy
    /// the lists that it changes.
    [[nodiscard]] const MarkdownContent &content() const;
    /// No block before this index differs from what it was before the last append or reset, or
    /// has moved. May be as large as the number of blocks, when nothing changed.
    [[nodiscard]] qsizetype firstChangedBlock() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace velto::markdown
