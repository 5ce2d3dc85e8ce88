// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/model/markdowncontent.h"

#include <QAbstractListModel>

namespace velto::markdown
{

/// The top-level blocks of a text. Given new blocks, it changes only the rows that differ, so that
/// whoever shows them does no more than that either.
class BlockListModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role { PlainTextRole = Qt::DisplayRole };

    using QAbstractListModel::QAbstractListModel;

    /// No block before `firstChanged` is looked at. Those after it are compared from the front,
    /// and from the back where their number has changed.
    void setBlocks(const QList<BlockNode> &blocks, qsizetype firstChanged = 0);
    [[nodiscard]] const QList<BlockNode> &blocks() const { return m_blocks; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

private:
    void replaceRows(qsizetype first, qsizetype removed, const QList<BlockNode> &inserted);
    void changeRows(const QList<BlockNode> &blocks, qsizetype first, qsizetype end);

    QList<BlockNode> m_blocks;
};

} // namespace velto::markdown
