// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/failure.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace
{

using namespace velto::base;

struct Text
{
    Failure failure;
    QString expected;
};

class FailureText : public testing::TestWithParam<Text>
{};

TEST_P(FailureText, ReadsWordForWord)
{
    EXPECT_EQ(description(GetParam().failure), GetParam().expected);
}

using Auth = AuthError::Kind;
using Loopback = LoopbackError::Kind;
using Transport = TransportError::Kind;

INSTANTIATE_TEST_SUITE_P(
    All, FailureText,
    testing::Values(
        Text{APIError{500, QStringLiteral("boom")},
             QStringLiteral("Request failed (HTTP 500): boom")},
        Text{APIError{503, QStringLiteral("<no body>")},
             QStringLiteral("Request failed (HTTP 503)")},
        Text{APIError{503, {}}, QStringLiteral("Request failed (HTTP 503)")},
        Text{APIError{422, QStringLiteral("%1 of %2")},
             QStringLiteral("Request failed (HTTP 422): %1 of %2")},
        Text{ChatHTTPError{500, QStringLiteral("<no body>")},
             QStringLiteral("Chat request failed (HTTP 500): <no body>")},
        Text{ChatHTTPError{429, QStringLiteral("100%2 busy")},
             QStringLiteral("Chat request failed (HTTP 429): 100%2 busy")},
        Text{ChatHTTPError{500, {}}, QStringLiteral("Chat request failed (HTTP 500): ")},
        Text{AuthError{Auth::Server, QStringLiteral("invalid_grant")},
             QStringLiteral("Server error: invalid_grant")},
        Text{AuthError{Auth::UserCancelled, {}}, QStringLiteral("Sign-in was cancelled.")},
        Text{AuthError{Auth::MissingCode, {}},
             QStringLiteral("Authorization server returned no code.")},
        Text{AuthError{Auth::StateMismatch, {}},
             QStringLiteral("OAuth state mismatch (possible CSRF).")},
        Text{AuthError{Auth::SessionExpired, {}},
             QStringLiteral("Your session expired. Please sign in again.")},
        Text{LoopbackError{Loopback::NoPort},
             QStringLiteral("Could not open a local callback port.")},
        Text{LoopbackError{Loopback::TimedOut},
             QStringLiteral("Timed out waiting for the sign-in redirect.")},
        Text{DecodingError{{}, QStringLiteral("an object"), QStringLiteral("a list")},
             QStringLiteral("The service's answer could not be read: expected an object, "
                            "found a list.")},
        Text{
            DecodingError{QStringLiteral("a.b"), QStringLiteral("text"), QStringLiteral("nothing")},
            QStringLiteral("The service's answer could not be read: expected text at “a.b”, "
                           "found nothing.")},
        Text{EncodingError{QStringLiteral("rate")},
             QStringLiteral("A value can't be sent: “rate” is not a number.")},
        Text{TransportError{Transport::SecureConnectionFailed, QStringLiteral("bad cert")},
             QStringLiteral("A secure connection to the service could not be made. (bad cert)")},
        Text{TransportError{Transport::SecureConnectionFailed, {}},
             QStringLiteral("A secure connection to the service could not be made.")}));

TEST(Failure, EveryTransportErrorHasASentenceOfItsOwn)
{
    QStringList sentences;
    for (int kind = 0; kind <= static_cast<int>(Transport::Other); ++kind)
        sentences.append(description(TransportError{static_cast<Transport>(kind), {}}));
    for (const QString &sentence : sentences)
        EXPECT_TRUE(sentence.endsWith(u'.') && sentence.size() > 8) << qPrintable(sentence);
    EXPECT_EQ(sentences.removeDuplicates(), 0);
}

TEST(Failure, AKeychainErrorIsASentenceThatEndsWithItsNumber)
{
    for (const qint32 status : {qint32(KeychainError::NoService), qint32(KeychainError::Locked),
                                qint32(KeychainError::Unknown), 42}) {
        const QString text = description(KeychainError{status});
        EXPECT_TRUE(text.endsWith(QStringLiteral("(%1)").arg(status))) << qPrintable(text);
        EXPECT_TRUE(text.contains(QStringLiteral("password store"))) << qPrintable(text);
    }
}

TEST(Failure, OnlyACancelledTransferIsACancellation)
{
    EXPECT_TRUE(isCancellation(TransportError{Transport::Cancelled, {}}));
    EXPECT_FALSE(isCancellation(TransportError{Transport::TimedOut, {}}));
    EXPECT_FALSE(isCancellation(AuthError{Auth::UserCancelled, {}}));
    EXPECT_FALSE(isCancellation(APIError{499, {}}));
}

} // namespace
