// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"

#include <QByteArrayView>
#include <QString>

#include <cstddef>

namespace velto::base::json
{

enum class Kind { Nothing, Null, Bool, Number, Text, List, Object };

/// As an error names it: "a number", "nothing".
[[nodiscard]] QString nameOf(Kind kind);

/// A value inside a parsed document, or nothing at all. Cheap to copy; valid as long as its
/// Document.
class Value final
{
public:
    Value() = default;

    [[nodiscard]] Kind kind() const;
    /// Each gives false when the value is of another kind.
    [[nodiscard]] bool get(bool &out) const;
    [[nodiscard]] bool get(double &out) const;
    [[nodiscard]] bool get(QString &out) const;
    /// A number without a fraction that fits, however it is written.
    [[nodiscard]] bool get(qint64 &out) const;

    /// Calls `visit` with each element of a list, in order, until it gives false; true when all
    /// gave true. For other kinds there is nothing to visit.
    template<typename F>
    bool forEachElement(F visit) const
    {
        return visitElements([](void *f, Value element) { return (*static_cast<F *>(f))(element); },
                             &visit);
    }
    /// The same for the members of an object, with their keys in UTF-8.
    template<typename F>
    bool forEachMember(F visit) const
    {
        return visitMembers([](void *f, QByteArrayView key,
                               Value member) { return (*static_cast<F *>(f))(key, member); },
                            &visit);
    }
    [[nodiscard]] qsizetype count() const;

private:
    friend class Document;

    bool visitElements(bool (*visit)(void *, Value), void *context) const;
    bool visitMembers(bool (*visit)(void *, QByteArrayView, Value), void *context) const;

    // Where the value lies in the parser's own representation, which stays out of this header.
    const void *m_tape = nullptr;
    std::size_t m_index = 0;
};

/// A parsed JSON text, whose top is an array or an object. One at a time on a thread: the next one
/// takes over the parser's memory, which is what makes short documents cheap.
class Document final
{
public:
    [[nodiscard]] static Result<Document> parse(QByteArrayView text);
    [[nodiscard]] Value root() const { return m_root; }

private:
    Value m_root;
};

} // namespace velto::base::json
