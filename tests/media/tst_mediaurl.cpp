// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/media/mediaurl.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace velto::presentation;

namespace
{

QUrl url(const char *text)
{
    return QUrl(QString::fromUtf8(text));
}

const QUrl service = url("https://service.example");

/// The resolved address, or an empty text for none.
QByteArray resolved(const char *raw, const QUrl &base = service)
{
    const auto address = resolveMediaURL(url(raw), base);
    return address ? address->url.toEncoded() : QByteArray();
}

bool needsAuth(const char *raw, const QUrl &base = service)
{
    const auto address = resolveMediaURL(url(raw), base);
    return address && address->needsAuth;
}

} // namespace

TEST(MediaURL, aMediaURLNamesAFileOfTheService)
{
    EXPECT_EQ(resolved("media:some/path.png"), "https://service.example/v1/media/some/path.png");
    EXPECT_TRUE(needsAuth("media:some/path.png"));
    EXPECT_EQ(resolved("media:a.png", url("http://127.0.0.1:7717/below/it?q#f")),
              "http://127.0.0.1:7717/v1/media/a.png");
}

TEST(MediaURL, nothingIsBehindAnEmptyOne)
{
    EXPECT_FALSE(resolveMediaURL(QUrl(), service).has_value());
    EXPECT_FALSE(resolveMediaURL(url("media:"), service).has_value());
    EXPECT_FALSE(resolveMediaURL(url("media:media:"), service).has_value());
}

TEST(MediaURL, everyMentionOfTheSchemeGoes)
{
    EXPECT_EQ(resolved("media:a/media:b.png"), "https://service.example/v1/media/a/b.png");
}

TEST(MediaURL, whatAPathMayNotHoldIsEncoded)
{
    EXPECT_EQ(mediaURL(u"a b?c#d[e]%20.png", service)->toEncoded(),
              "https://service.example/v1/media/a%20b%3Fc%23d%5Be%5D%2520.png");
    EXPECT_EQ(mediaURL(u"\u00e9\U0001f600.png", service)->toEncoded(),
              "https://service.example/v1/media/%C3%A9%F0%9F%98%80.png");
    EXPECT_EQ(mediaURL(u"!$&'()*+,;=:@-._~/x", service)->toEncoded(),
              "https://service.example/v1/media/!$&'()*+,;=:@-._~/x");
    // What is encoded in the URL is encoded once more: its text is the name.
    EXPECT_EQ(resolved("media:a%20b.png?c"), "https://service.example/v1/media/a%2520b.png%3Fc");
}

TEST(MediaURL, halfACharacterCantBeEncoded)
{
    const QString half(QChar(0xd83d));
    EXPECT_FALSE(mediaURL(half + QStringLiteral(".png"), service).has_value());
    EXPECT_FALSE(mediaURL(QStringView(), service).has_value());
}

TEST(MediaURL, dotSegmentsThatLeaveTheFolderLeadNowhere)
{
    for (const char *path :
         {"..", "../me", "a/../../me", "./../me", "%2e%2e/me", "%2E./me", "..%2fme", "..%2Fme",
          "%252e%252e/me", "a/..%255c..%255cme", "..\\me", "a\\..\\..\\me", "//../../me", "a/../..",
          "/../me", "%2525252e%2525252e/me", "..?x", "a/../..#x",
          "%252525252525252525252525252525252525252e./me"}) {
        const QString text = QString::fromUtf8(path);
        EXPECT_FALSE(mediaURL(text, service).has_value()) << path;
        EXPECT_EQ(resolved(("media:" + QByteArray(path)).constData()), "") << path;
    }
}

TEST(MediaURL, dotSegmentsThatStayAreResolved)
{
    EXPECT_EQ(resolved("media:a/../b.png"), "https://service.example/v1/media/b.png");
    EXPECT_EQ(resolved("media:./b.png"), "https://service.example/v1/media/b.png");
    EXPECT_EQ(resolved("media:a/b/../../c.png"), "https://service.example/v1/media/c.png");
    EXPECT_EQ(resolved("media:..a/b...png"), "https://service.example/v1/media/..a/b...png");
}

TEST(MediaURL, aPathNeverBecomesAnotherHost)
{
    EXPECT_EQ(resolved("media://elsewhere.example/a.png"),
              "https://service.example/v1/media///elsewhere.example/a.png");
    EXPECT_EQ(resolved("media:@elsewhere.example/a.png"),
              "https://service.example/v1/media/@elsewhere.example/a.png");
}

TEST(MediaURL, otherURLsStayAsTheyAre)
{
    for (const char *raw : {"https://elsewhere.example/a.png", "data:image/png;base64,AAAA",
                            "file:///etc/passwd", "a/relative.png", "/v1/media/a.png"}) {
        EXPECT_EQ(resolveMediaURL(url(raw), service), (MediaAddress{url(raw), false})) << raw;
    }
}

TEST(MediaURL, theServicesOwnMediaTakesTheToken)
{
    const char *raw = "https://service.example/v1/media/a.png?size=2";
    EXPECT_EQ(resolveMediaURL(url(raw), service), (MediaAddress{url(raw), true}));
    EXPECT_TRUE(needsAuth("https://service.example:443/v1/media/a.png"));
}

TEST(MediaURL, nothingElseTakesTheToken)
{
    for (const char *raw :
         {"https://elsewhere.example/v1/media/a.png", "https://service.example/v1/me",
          "https://service.example/v1/mediaset/a.png", "https://service.example/v1/media",
          "https://service.example/x/v1/media/a.png", "https://service.example/v1/media/../me",
          "https://service.example/v1/media/%2e%2e/me",
          "https://service.example/v1/media/%252e%252e/me",
          "https://service.example/v1/media/a/..%2f..%2fme",
          "https://service.example.evil.example/v1/media/a.png",
          "https://sub.service.example/v1/media/a.png", "http://service.example/v1/media/a.png",
          "https://service.example:8443/v1/media/a.png", "//service.example/v1/media/a.png",
          "ftp://service.example/v1/media/a.png", "https:/v1/media/a.png"}) {
        EXPECT_FALSE(needsAuth(raw)) << raw;
        EXPECT_EQ(resolveMediaURL(url(raw), service)->url, url(raw)) << raw;
    }
}

TEST(MediaURL, withoutAServiceThereIsNothing)
{
    EXPECT_FALSE(resolveMediaURL(url("media:a.png"), QUrl()).has_value());
    EXPECT_FALSE(needsAuth("/v1/media/a.png", QUrl()));
}

RC_GTEST_PROP(MediaURLProperty, whatTakesTheTokenIsBelowTheServicesMedia, ())
{
    static const std::vector<std::string> pieces{"..", ".",   "/",      "\\",    "a",  "%2e", "%2f",
                                                 "%",  "%25", ":",      "media", "//", "?",   "#",
                                                 " ",  "@",   "\u00e9", "%5c",   ";"};
    const auto parts = *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(pieces));
    QString path;
    for (const std::string &part : parts)
        path += QString::fromStdString(part);
    const auto found = mediaURL(path, service);
    if (!found)
        return;
    RC_ASSERT(found->host() == service.host());
    QString seen = found->path(QUrl::FullyEncoded);
    // However often it is decoded, and whatever ends a segment for whom, it stays in the folder.
    for (int i = 0; i < 6; ++i) {
        for (const QChar separator : {u'\\', u'?', u'#'})
            seen.replace(separator, u'/');
        const QUrl again = service.resolved(QUrl(seen));
        RC_ASSERT(QString(again.path() + u'/').startsWith(u"/v1/media/"));
        seen = QUrl::fromPercentEncoding(seen.toUtf8());
    }
}
