// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QQmlNetworkAccessManagerFactory>

namespace velto::shell
{

/// Keeps QML off the network: whatever an item wants to fetch is refused, so no text or picture
/// from elsewhere can make the program send a request. What the program holds itself is not
/// fetched.
class RefusingNetwork final : public QQmlNetworkAccessManagerFactory
{
public:
    QNetworkAccessManager *create(QObject *parent) override;
};

} // namespace velto::shell
