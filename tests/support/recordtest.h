// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/json.h"

#include <gtest/gtest.h>

namespace velto::test
{

template<typename T>
[[nodiscard]] base::Result<T> decoded(const QByteArray &document)
{
    return base::json::decode<T>(document, base::json::Keys::Snake);
}

/// Reads a document into a record and writes the record again; null when it doesn't fit.
using RoundTrip = QByteArray (*)(const QByteArray &document);

template<typename T>
[[nodiscard]] QByteArray throughRecord(const QByteArray &document)
{
    T record{};
    if (!base::json::decodeInto(record, document, base::json::Keys::Snake))
        return {};
    return base::json::encode(record, base::json::Keys::Plain).value();
}

/// Checks that a record has these fields and no others, that each `required` one is missed when it
/// is absent and that each `optional` one may be absent or null; in both spellings of the keys. A
/// field is "name:json" or, for a text with its own name as value, "name".
void expectFields(RoundTrip throughRecord, const QList<QByteArray> &required,
                  const QList<QByteArray> &optional);

template<typename T>
void expectFields(const QList<QByteArray> &required, const QList<QByteArray> &optional)
{
    expectFields(&throughRecord<T>, required, optional);
}

} // namespace velto::test
