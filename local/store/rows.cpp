// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "local/store/rows.h"

#include "local/text.h"

namespace velto::local
{

using nlohmann::json;

namespace
{

json valueOf(const Statement &query, int column, std::string_view kind)
{
    if (query.isNull(column))
        return nullptr;
    if (kind == "bool")
        return query.integer(column) != 0;
    if (kind == "time")
        return isoTime(query.integer(column));
    if (kind == "json")
        return json::parse(query.text(column), nullptr, false);
    return query.isInteger(column) ? json(query.integer(column)) : json(query.text(column));
}

json currentRow(const Statement &query)
{
    json row = json::object();
    for (int column = 0; column < query.columns(); ++column) {
        const std::string_view name = query.name(column);
        const auto colon = name.find(':');
        const std::string_view kind =
            colon == std::string_view::npos ? std::string_view() : name.substr(colon + 1);
        row[std::string(name.substr(0, colon))] = valueOf(query, column, kind);
    }
    return row;
}

} // namespace

json rowsOf(Statement &query)
{
    json rows = json::array();
    while (query.step())
        rows.push_back(currentRow(query));
    return rows;
}

json rowOf(Statement &query)
{
    return query.step() ? currentRow(query) : json();
}

} // namespace velto::local
