// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/failure.h"

#include <QCoreApplication>

namespace velto::base
{
namespace
{

QString tr(const char *text)
{
    return QCoreApplication::translate("Failure", text);
}

QString describe(const APIError &error)
{
    if (error.body.isEmpty() || error.body == u"<no body>")
        return tr("Request failed (HTTP %1)").arg(error.status);
    return tr("Request failed (HTTP %1): %2").arg(QString::number(error.status), error.body);
}

QString describe(const ChatHTTPError &error)
{
    return tr("Chat request failed (HTTP %1): %2").arg(QString::number(error.status), error.body);
}

QString describe(const AuthError &error)
{
    switch (error.kind) {
    case AuthError::Kind::Server:
        return tr("Server error: %1").arg(error.text);
    case AuthError::Kind::UserCancelled:
        return tr("Sign-in was cancelled.");
    case AuthError::Kind::MissingCode:
        return tr("Authorization server returned no code.");
    case AuthError::Kind::StateMismatch:
        return tr("OAuth state mismatch (possible CSRF).");
    case AuthError::Kind::SessionExpired:
        return tr("Your session expired. Please sign in again.");
    }
    return {};
}

QString describe(const LoopbackError &error)
{
    switch (error.kind) {
    case LoopbackError::Kind::NoPort:
        return tr("Could not open a local callback port.");
    case LoopbackError::Kind::TimedOut:
        return tr("Timed out waiting for the sign-in redirect.");
    }
    return {};
}

QString describe(const KeychainError &error)
{
    switch (error.status) {
    case KeychainError::NoService:
        return tr("No password store answers on this desktop, and velto keeps its sign-in nowhere "
                  "else. Start a keyring such as GNOME Keyring or KWallet and sign in again. (%1)")
            .arg(error.status);
    case KeychainError::Locked:
        return tr("The desktop's password store is locked. Unlock it and sign in again. (%1)")
            .arg(error.status);
    default:
        return tr("The desktop's password store could not keep the sign-in. (%1)")
            .arg(error.status);
    }
}

QString withDetail(const QString &sentence, const QString &detail)
{
    return detail.isEmpty() ? sentence : tr("%1 (%2)").arg(sentence, detail);
}

QString describe(const TransportError &error)
{
    switch (error.kind) {
    case TransportError::Kind::BadURL:
        return tr("The address is not valid.");
    case TransportError::Kind::BadServerResponse:
        return tr("The service gave an answer that can't be used.");
    case TransportError::Kind::Cancelled:
        return tr("Cancelled.");
    case TransportError::Kind::TimedOut:
        return tr("The service did not answer in time.");
    case TransportError::Kind::CannotFindHost:
        return tr("The service's host could not be found. Check the network connection.");
    case TransportError::Kind::CannotConnect:
        return tr("Could not connect to the service.");
    case TransportError::Kind::ConnectionLost:
        return tr("The connection to the service was lost.");
    case TransportError::Kind::SecureConnectionFailed:
        return withDetail(tr("A secure connection to the service could not be made."),
                          error.detail);
    case TransportError::Kind::TooManyRedirects:
        return tr("The service redirected too many times.");
    case TransportError::Kind::InsecureRedirect:
        return tr("The service redirected to an address that is not secure.");
    case TransportError::Kind::CannotDecodeContentData:
        return tr("The content can't be decoded.");
    case TransportError::Kind::Other:
        return withDetail(tr("The request could not be carried out."), error.detail);
    }
    return {};
}

QString describe(const DecodingError &error)
{
    if (error.path.isEmpty())
        return tr("The service's answer could not be read: expected %1, found %2.")
            .arg(error.expected, error.found);
    return tr("The service's answer could not be read: expected %1 at “%2”, found %3.")
        .arg(error.expected, error.path, error.found);
}

QString describe(const EncodingError &error)
{
    return tr("A value can't be sent: “%1” is not a number.").arg(error.path);
}

} // namespace

QString description(const Failure &failure)
{
    return std::visit([](const auto &error) { return describe(error); }, failure);
}

bool isCancellation(const Failure &failure)
{
    const auto *transport = std::get_if<TransportError>(&failure);
    return transport != nullptr && transport->kind == TransportError::Kind::Cancelled;
}

} // namespace velto::base
