// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/theme/blockstyle.h"

#include <QMetaType>

#include <array>

namespace velto::markdown
{

/// Every decision about the looks of Markdown, as one value. A new theme has defaults that leave
/// most blocks as they are; each setter gives a copy with one field replaced.
class Theme final
{
public:
    using Block = BlockStyle<BlockConfiguration>;
    using CodeBlock = BlockStyle<CodeBlockConfiguration>;
    using ListMarker = BlockStyle<ListMarkerConfiguration>;
    using TaskListMarker = BlockStyle<TaskListMarkerConfiguration>;
    using TableCell = BlockStyle<TableCellConfiguration>;
    using Divider = BlockStyle<void>;

    Theme();

    [[nodiscard]] const TextStyle &text() const { return m_text; }
    [[nodiscard]] const TextStyle &code() const { return m_code; }
    [[nodiscard]] const TextStyle &emphasis() const { return m_emphasis; }
    [[nodiscard]] const TextStyle &strong() const { return m_strong; }
    [[nodiscard]] const TextStyle &strikethrough() const { return m_strikethrough; }
    [[nodiscard]] const TextStyle &link() const { return m_link; }
    /// Of level 1 at index 0 to level 6.
    [[nodiscard]] const std::array<Block, 6> &headings() const { return m_headings; }
    [[nodiscard]] const Block &paragraph() const { return m_paragraph; }
    [[nodiscard]] const Block &blockquote() const { return m_blockquote; }
    [[nodiscard]] const CodeBlock &codeBlock() const { return m_codeBlock; }
    [[nodiscard]] const Block &image() const { return m_image; }
    [[nodiscard]] const Block &list() const { return m_list; }
    [[nodiscard]] const Block &listItem() const { return m_listItem; }
    [[nodiscard]] const TaskListMarker &taskListMarker() const { return m_taskListMarker; }
    [[nodiscard]] const ListMarker &bulletedListMarker() const { return m_bulletedListMarker; }
    [[nodiscard]] const ListMarker &numberedListMarker() const { return m_numberedListMarker; }
    [[nodiscard]] const Block &table() const { return m_table; }
    [[nodiscard]] const TableCell &tableCell() const { return m_tableCell; }
    [[nodiscard]] const Divider &thematicBreak() const { return m_thematicBreak; }

    [[nodiscard]] Theme text(TextStyle style) const;
    [[nodiscard]] Theme code(TextStyle style) const;
    [[nodiscard]] Theme emphasis(TextStyle style) const;
    [[nodiscard]] Theme strong(TextStyle style) const;
    [[nodiscard]] Theme strikethrough(TextStyle style) const;
    [[nodiscard]] Theme link(TextStyle style) const;
    /// `level` is 1 to 6.
    [[nodiscard]] Theme heading(int level, Block style) const;
    [[nodiscard]] Theme paragraph(Block style) const;
    [[nodiscard]] Theme blockquote(Block style) const;
    [[nodiscard]] Theme codeBlock(CodeBlock style) const;
    [[nodiscard]] Theme image(Block style) const;
    [[nodiscard]] Theme list(Block style) const;
    [[nodiscard]] Theme listItem(Block style) const;
    [[nodiscard]] Theme taskListMarker(TaskListMarker style) const;
    [[nodiscard]] Theme bulletedListMarker(ListMarker style) const;
    [[nodiscard]] Theme numberedListMarker(ListMarker style) const;
    [[nodiscard]] Theme table(Block style) const;
    [[nodiscard]] Theme tableCell(TableCell style) const;
    [[nodiscard]] Theme thematicBreak(Divider style) const;

private:
    TextStyle m_text;
    TextStyle m_code;
    TextStyle m_emphasis;
    TextStyle m_strong;
    TextStyle m_strikethrough;
    TextStyle m_link;
    std::array<Block, 6> m_headings;
    Block m_paragraph;
    Block m_blockquote;
    CodeBlock m_codeBlock;
    Block m_image;
    Block m_list;
    Block m_listItem;
    TaskListMarker m_taskListMarker;
    ListMarker m_bulletedListMarker;
    ListMarker m_numberedListMarker;
    Block m_table;
    TableCell m_tableCell;
    Divider m_thematicBreak;
};

} // namespace velto::markdown

Q_DECLARE_METATYPE(velto::markdown::Theme)
