// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace velto::controls
{

void Clipboard::copy(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace velto::controls
