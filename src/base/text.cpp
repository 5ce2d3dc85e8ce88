// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/text.h"

#include <QStringDecoder>
#include <QUrl>

namespace velto::base
{

std::optional<QString> utf8Text(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

QString uuidText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

QString pathEncoded(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, "!$&'()*+,-./:=@_~"));
}

QByteArray formEncoded(const QString &text)
{
    return QUrl::toPercentEncoding(text, "!$'()*,-./:;?@_~");
}

} // namespace velto::base
