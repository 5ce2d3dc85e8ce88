// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/streamframe.h"

namespace velto::chat
{

using base::json::field;
using base::json::Fields;

std::optional<StreamFrame> frameFromLine(QByteArrayView line)
{
    constexpr QByteArrayView prefix("data: ");
    const QByteArrayView payload = line.startsWith(prefix) ? line.sliced(prefix.size()) : line;
    if (payload.isEmpty())
        return std::nullopt;
    auto frame = base::json::decode<StreamFrame>(payload, base::json::Keys::Plain);
    if (!frame)
        return std::nullopt;
    return std::move(*frame);
}

Fields StreamData::jsonFields()
{
    static constexpr std::array fields{
        field<&StreamData::summary>("summary"),
        field<&StreamData::suggestion>("suggestion"),
    };
    return fields;
}

Fields StreamFrame::jsonFields()
{
    static constexpr std::array fields{
        field<&StreamFrame::type>("type"),
        field<&StreamFrame::delta>("delta"),
        field<&StreamFrame::toolCallId>("toolCallId"),
        field<&StreamFrame::toolName>("toolName"),
        field<&StreamFrame::input>("input"),
        field<&StreamFrame::output>("output"),
        field<&StreamFrame::errorText>("errorText"),
        field<&StreamFrame::data>("data"),
    };
    return fields;
}

} // namespace velto::chat
