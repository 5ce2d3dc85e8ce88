// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/pkce.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <array>

namespace velto::auth
{
namespace
{

QString urlSafeBase64(const QByteArray &bytes)
{
    return QString::fromLatin1(
        bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

} // namespace

QString randomURLSafeString()
{
    std::array<quint32, 16> words{};
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    return urlSafeBase64(QByteArray(reinterpret_cast<const char *>(words.data()), sizeof(words)));
}

QString codeChallenge(const QString &verifier)
{
    return urlSafeBase64(QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256));
}

} // namespace velto::auth
