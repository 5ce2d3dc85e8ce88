// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/growinglist.h"

#include <utility>

namespace velto::markdown::growinglist
{

namespace
{

template<typename Visitor>
auto visitList(BlockNode &list, Visitor visitor)
{
    if (auto *tasks = std::get_if<blocks::TaskList>(&list.kind))
        return visitor(*tasks);
    if (auto *numbered = std::get_if<blocks::NumberedList>(&list.kind))
        return visitor(*numbered);
    return visitor(std::get<blocks::BulletedList>(list.kind));
}

template<typename To, typename From>
QList<To> converted(QList<From> &items)
{
    QList<To> out;
    out.reserve(items.size());
    for (From &item : items) {
        To to;
        to.children = std::move(item.children);
        out.append(std::move(to));
    }
    return out;
}

QList<RawListItem> plainItems(BlockNode &list)
{
    if (auto *tasks = std::get_if<blocks::TaskList>(&list.kind))
        return converted<RawListItem>(tasks->items);
    if (auto *numbered = std::get_if<blocks::NumberedList>(&list.kind))
        return std::exchange(numbered->items, {});
    return std::exchange(std::get<blocks::BulletedList>(list.kind).items, {});
}

} // namespace

qsizetype count(const BlockNode &list)
{
    return visitList(const_cast<BlockNode &>(list),
                     [](auto &kind) { return std::as_const(kind.items).size(); });
}

QList<BlockNode> &childrenAt(BlockNode &list, qsizetype index)
{
    QList<BlockNode> *children =
        visitList(list, [index](auto &kind) { return &kind.items[index].children; });
    return *children;
}

void truncate(BlockNode &list, qsizetype count)
{
    visitList(list, [count](auto &kind) {
        if (kind.items.size() > count)
            kind.items.erase(kind.items.begin() + count, kind.items.end());
    });
}

void append(BlockNode &list, RawTaskListItem item)
{
    if (auto *tasks = std::get_if<blocks::TaskList>(&list.kind))
        tasks->items.append(std::move(item));
    else if (auto *numbered = std::get_if<blocks::NumberedList>(&list.kind))
        numbered->items.append({std::move(item.children)});
    else
        std::get<blocks::BulletedList>(list.kind).items.append({std::move(item.children)});
}

void setCompleted(BlockNode &list, qsizetype index, bool isCompleted)
{
    if (auto *tasks = std::get_if<blocks::TaskList>(&list.kind))
        tasks->items[index].isCompleted = isCompleted;
}

void setKind(BlockNode &list, bool hasTasks, bool isNumbered, int start)
{
    if (hasTasks) {
        if (!std::holds_alternative<blocks::TaskList>(list.kind)) {
            QList<RawListItem> items = plainItems(list);
            list.kind = blocks::TaskList{true, converted<RawTaskListItem>(items)};
        }
    } else if (isNumbered) {
        if (!std::holds_alternative<blocks::NumberedList>(list.kind))
            list.kind = blocks::NumberedList{true, start, plainItems(list)};
    } else if (!std::holds_alternative<blocks::BulletedList>(list.kind)) {
        list.kind = blocks::BulletedList{true, plainItems(list)};
    }
}

void setTight(BlockNode &list, bool isTight)
{
    visitList(list, [isTight](auto &kind) { kind.isTight = isTight; });
}

} // namespace velto::markdown::growinglist
