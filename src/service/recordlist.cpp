// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/recordlist.h"

namespace velto::service
{

int RecordListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant RecordListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != RecordRole)
        return {};
    return record(index.row());
}

QHash<int, QByteArray> RecordListModel::roleNames() const
{
    return {{RecordRole, "record"}};
}

} // namespace velto::service
