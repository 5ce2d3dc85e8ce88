// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/blocklistmodel.h"

#include <algorithm>

namespace velto::markdown
{

void BlockListModel::setBlocks(const QList<BlockNode> &blocks, qsizetype firstChanged)
{
    const qsizetype before = m_blocks.size();
    const qsizetype after = blocks.size();
    const qsizetype shorter = std::min(before, after);
    qsizetype first = std::clamp<qsizetype>(firstChanged, 0, shorter);
    while (first < shorter && m_blocks[first] == blocks[first])
        ++first;
    // A text that grows keeps nothing behind the first change; another text may.
    qsizetype same = 0;
    if (before != after) {
        while (same < shorter - first && m_blocks[before - 1 - same] == blocks[after - 1 - same])
            ++same;
    }
    const qsizetype common = shorter - same;
    changeRows(blocks, first, common);
    replaceRows(common, before - same - common, blocks.sliced(common, after - same - common));
}

void BlockListModel::changeRows(const QList<BlockNode> &blocks, qsizetype first, qsizetype end)
{
    qsizetype row = first;
    while (row < end) {
        if (m_blocks[row] == blocks[row]) {
            ++row;
            continue;
        }
        const qsizetype start = row;
        while (row < end && m_blocks[row] != blocks[row]) {
            m_blocks[row] = blocks[row];
            ++row;
        }
        emit dataChanged(index(static_cast<int>(start)), index(static_cast<int>(row - 1)));
    }
}

void BlockListModel::replaceRows(qsizetype first, qsizetype removed,
                                 const QList<BlockNode> &inserted)
{
    const int row = static_cast<int>(first);
    if (removed > 0) {
        beginRemoveRows({}, row, row + static_cast<int>(removed) - 1);
        m_blocks.remove(first, removed);
        endRemoveRows();
    }
    if (!inserted.isEmpty()) {
        beginInsertRows({}, row, row + static_cast<int>(inserted.size()) - 1);
        for (qsizetype at = 0; at < inserted.size(); ++at)
            m_blocks.insert(first + at, inserted[at]);
        endInsertRows();
    }
}

int BlockListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_blocks.size());
}

QVariant BlockListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != PlainTextRole)
        return {};
    return MarkdownContent(QList<BlockNode>{m_blocks[index.row()]}).renderPlainText();
}

} // namespace velto::markdown
