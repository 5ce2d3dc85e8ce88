// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "workspace/roles.h"

namespace velto::workspace
{

QString capitalized(const QString &role)
{
    QString shown = role.toLower();
    bool startsWord = true;
    for (QChar &letter : shown) {
        if (startsWord)
            letter = letter.toUpper();
        startsWord = letter.isSpace();
    }
    return shown;
}

} // namespace velto::workspace
