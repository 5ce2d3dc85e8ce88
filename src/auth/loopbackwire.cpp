// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "auth/loopbackwire.h"

#include "base/text.h"

#include <QStringList>

namespace velto::auth
{
namespace
{

// clang-format off
constexpr char successPage[] = R"(<!doctype html>
<html lang="en">
<head><meta charset="utf-8"><title>Signed in to velto</title></head>
<body style="font-family:-apple-system,BlinkMacSystemFont,'Segoe UI',sans-serif;display:flex;min-height:100vh;margin:0;align-items:center;justify-content:center;background:#fafafa;color:#1a1a1a">
  <div style="text-align:center">
    <div style="font-size:44px;line-height:1">✓</div>
    <h1 style="font-size:19px;font-weight:600;margin:14px 0 4px">Signed in to velto</h1>
    <p style="color:#888;font-size:14px;margin:0">You can close this tab and return to the app.</p>
  </div>
</body>
</html>)";
// clang-format on

constexpr char notFoundPage[] = "<!doctype html><title>Not found</title>";

QByteArray answer(const QByteArray &status, const QByteArray &body)
{
    return "HTTP/1.1 " + status + "\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: " +
           QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

} // namespace

QString callbackTarget(QByteArrayView chunk)
{
    const QString text = base::utf8Text(chunk).value_or(QString());
    const QString requestLine = text.left(text.indexOf(u"\r\n"));
    return requestLine.split(u' ', Qt::SkipEmptyParts).value(1, QStringLiteral("/"));
}

bool isCallback(const QString &target)
{
    return target.startsWith(u"/callback");
}

QByteArray callbackAnswer()
{
    return answer("200 OK", successPage);
}

QByteArray notFoundAnswer()
{
    return answer("404 Not Found", notFoundPage);
}

} // namespace velto::auth
