// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/helpersecretstore.h"

#include <cstdio>

/// secretcaller HELPER: a program that loads one secret and prints it, for tests that end it
/// meanwhile.
int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    velto::platform::HelperSecretStore store(QString::fromLocal8Bit(argv[1]));
    const auto loaded =
        store.load(QStringLiteral("ltd.orbax.velto"), QStringLiteral("refresh_token"));
    if (!loaded)
        return 1;
    std::puts(loaded->value_or(QStringLiteral("<nothing>")).toUtf8().constData());
    return 0;
}
