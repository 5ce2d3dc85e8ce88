// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <rapidcheck.h>

/// Pieces that meet each other in all ways: delimiters, escapes, line ends of every kind,
/// characters around the word boundaries, halves of surrogate pairs, and `keywords`.
[[nodiscard]] rc::Gen<QString> tokenSoup(const QStringList &keywords);

/// `source` with pieces of the soup put in, and parts taken out or doubled.
[[nodiscard]] rc::Gen<QString> mutated(const QString &source, const QStringList &keywords);
