// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/apibaseurl.h"

#include <gtest/gtest.h>

namespace
{

using namespace velto::service;
using velto::base::TransportError;

const QUrl preset = baseURLFrom({});
const QUrl prefixed(QStringLiteral("https://h.example:8443/api/v9"));

TEST(BaseURL, IsTheBuildSettingWhenTheVariableIsNotSet)
{
    EXPECT_TRUE(preset.isValid());
    EXPECT_EQ(preset.scheme(), QStringLiteral("http"));
    EXPECT_EQ(preset.host(), QStringLiteral("127.0.0.1"));
    EXPECT_EQ(preset.port(), 7717);
}

TEST(BaseURL, IsTheVariableWhenThatParses)
{
    EXPECT_EQ(baseURLFrom("https://h.example:8443/api/v9"), prefixed);
    EXPECT_EQ(baseURLFrom("http://127.0.0.1:1"), QUrl(QStringLiteral("http://127.0.0.1:1")));
}

TEST(BaseURL, IsTheBuildSettingWhenTheVariableIsOfNoUse)
{
    for (const char *value : {"", "h.example", "/only/a/path", "http://", "http://a b/",
                              "http://h:port", "http://[::1", "mailto:x@y"})
        EXPECT_EQ(baseURLFrom(value), preset) << value;
}

TEST(Resolved, ReplacesThePathOfTheBase)
{
    EXPECT_EQ(resolved(prefixed, QStringLiteral("/v1/me")).value(),
              QUrl(QStringLiteral("https://h.example:8443/v1/me")));
}

TEST(Resolved, KeepsTheQueryAndItsEncoding)
{
    EXPECT_EQ(resolved(prefixed, QStringLiteral("/v1/c/a%2Fb%20c?limit=5&x=%26"))->toEncoded(),
              QByteArray("https://h.example:8443/v1/c/a%2Fb%20c?limit=5&x=%26"));
}

TEST(Resolved, RefusesWhatIsNoPathOfTheService)
{
    for (const char *path : {"", "v1/me", "//evil.example/v1/me", "http://evil.example/v1/me",
                             "/v1/bad path", "/v1/%zz"}) {
        const auto url = resolved(prefixed, QLatin1StringView(path));
        ASSERT_FALSE(url) << path;
        EXPECT_EQ(std::get<TransportError>(url.error()).kind, TransportError::Kind::BadURL) << path;
    }
    EXPECT_FALSE(resolved(QUrl(), QStringLiteral("/v1/me")));
}

TEST(Appended, KeepsThePathOfTheBase)
{
    EXPECT_EQ(appended(prefixed, QStringLiteral("/auth/oauth2/token")),
              QUrl(QStringLiteral("https://h.example:8443/api/v9/auth/oauth2/token")));
    EXPECT_EQ(appended(QUrl(QStringLiteral("http://h/api/")), QStringLiteral("auth/x")),
              QUrl(QStringLiteral("http://h/api/auth/x")));
    EXPECT_EQ(appended(QUrl(QStringLiteral("http://h")), QStringLiteral("/auth/x")),
              QUrl(QStringLiteral("http://h/auth/x")));
    EXPECT_EQ(appended(QUrl(QStringLiteral("http://h/")), QStringLiteral("/auth/x")),
              QUrl(QStringLiteral("http://h/auth/x")));
}

} // namespace
