// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/authclient.h"
#include "base/failure.h"
#include "base/text.h"
#include "chat/appstate.h"
#include "platform/urlopener.h"
#include "service/apiclient.h"

#include <cstdio>

int main()
{
    const QByteArray encoded = velto::base::formEncoded(QStringLiteral("a b&c"));
    std::puts(encoded.constData());
    const QByteArray name = velto::chat::AppState::staticMetaObject.className();
    return !encoded.isEmpty() && name == "velto::chat::AppState" ? 0 : 1;
}
