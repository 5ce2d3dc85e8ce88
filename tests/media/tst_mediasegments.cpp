// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/media/mediasegments.h"
#include "presentation/media/mediaurl.h"
#include "service/apibaseurl.h"
#include "support/cputime.h"

#include <QRegularExpression>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace velto::presentation;

namespace
{

using Segments = QList<MediaSegment>;

const QUrl service(QStringLiteral("https://service.example"));

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

MediaSegment markdown(const char *words)
{
    return MarkdownSegment{text(words)};
}

MediaSegment video(const char *path, const char *caption)
{
    return VideoSegment{QUrl(text("https://service.example/v1/media/") + text(path)),
                        text(caption)};
}

Segments segmentsOf(const char *words)
{
    return mediaSegments(text(words), service);
}

/// The rule as a regular expression.
Segments expected(const QString &text)
{
    // Compiled code gives up on long matches and calls that none.
    static const bool isInterpreted = qputenv("QT_ENABLE_REGEXP_JIT", "0");
    static const QRegularExpression pattern(
        QStringLiteral(R"((?<!\!)\[([^\]]*)\]\(media:([^)]+\.(?:mp4|webm|mov))\))"));
    Q_UNUSED(isInterpreted)
    // The expression knows no half characters; for it they are like any other.
    QString whole = text;
    for (qsizetype i = 0; i < whole.size(); ++i) {
        const bool isPair =
            whole[i].isHighSurrogate() && i + 1 < whole.size() && whole[i + 1].isLowSurrogate();
        if (isPair)
            ++i;
        else if (whole[i].isSurrogate())
            whole[i] = QChar::ReplacementCharacter;
    }
    Segments segments;
    qsizetype cursor = 0;
    auto matches = pattern.globalMatch(whole);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedStart() > cursor)
            segments.append(MarkdownSegment{text.sliced(cursor, match.capturedStart() - cursor)});
        cursor = match.capturedEnd();
        const QString path = text.sliced(match.capturedStart(2), match.capturedLength(2));
        if (const auto url = mediaURL(path, service))
            segments.append(
                VideoSegment{*url, text.sliced(match.capturedStart(1), match.capturedLength(1))});
    }
    if (cursor < text.size())
        segments.append(MarkdownSegment{text.sliced(cursor)});
    if (segments.isEmpty())
        segments.append(MarkdownSegment{text});
    return segments;
}

rc::Gen<QString> generatedText()
{
    static const std::vector<std::string> pieces{"[",
                                                 "]",
                                                 "(",
                                                 ")",
                                                 "!",
                                                 "![",
                                                 "](",
                                                 "](media:",
                                                 "(media:",
                                                 "media:",
                                                 ".mp4",
                                                 ".webm",
                                                 ".mov",
                                                 ".MP4",
                                                 ".mp4)",
                                                 ".mov)",
                                                 "a",
                                                 "../",
                                                 "/",
                                                 " ",
                                                 "\n",
                                                 "[cap](media:a.mp4)",
                                                 "[x](media:../b.mov)",
                                                 "]]",
                                                 "[[",
                                                 "[a](media:x[b.mp4)",
                                                 "\u00e9",
                                                 "\U0001f600",
                                                 "\\",
                                                 "`",
                                                 "%2e%2e/",
                                                 "text ",
                                                 "[a](media:b.txt)",
                                                 "mp4"};
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(pieces)),
                        [](const std::vector<std::string> &parts) {
                            QString joined;
                            for (const std::string &part : parts)
                                joined += QString::fromStdString(part);
                            return joined;
                        });
}

/// What a view sees that changes only what it is told of.
void follow(Segments &seen, const GrowingSegments &growing, const GrowingSegments::Change &change)
{
    const Segments &now = growing.segments();
    RC_ASSERT(change.first <= now.size());
    RC_ASSERT(change.first <= seen.size());
    if (change.isLonger) {
        RC_ASSERT(change.first == now.size() - 1);
        RC_ASSERT(seen.size() == now.size());
        const QString after = std::get<MarkdownSegment>(now.last()).text;
        RC_ASSERT(after.startsWith(std::get<MarkdownSegment>(seen.last()).text));
    }
    seen = seen.first(change.first) + now.sliced(change.first);
    RC_ASSERT(seen == now);
}

void checkCuts(const QString &whole, const std::vector<qsizetype> &lengths)
{
    GrowingSegments growing(service);
    Segments seen = growing.segments();
    qsizetype at = 0;
    for (std::size_t i = 0; at < whole.size(); ++i) {
        const qsizetype length =
            std::min(lengths.empty() ? 1 : lengths[i % lengths.size()], whole.size() - at);
        const auto change = growing.append(QStringView(whole).sliced(at, length));
        at += length;
        follow(seen, growing, change);
        RC_ASSERT(growing.segments() == expected(whole.first(at)));
    }
}

} // namespace

TEST(MediaSegments, aTextWithoutVideosIsOneSegment)
{
    EXPECT_EQ(segmentsOf(""), Segments{markdown("")});
    EXPECT_EQ(segmentsOf("plain [link](https://x.example)"),
              Segments{markdown("plain [link](https://x.example)")});
}

TEST(MediaSegments, aVideoAloneIsOneSegment)
{
    EXPECT_EQ(segmentsOf("[tide](media:clips/tide.webm)"),
              Segments{video("clips/tide.webm", "tide")});
}

TEST(MediaSegments, theTextAroundAVideoKeepsItsWhiteSpace)
{
    EXPECT_EQ(segmentsOf("before \n\n[tide](media:a.mp4)\n after"),
              (Segments{markdown("before \n\n"), video("a.mp4", "tide"), markdown("\n after")}));
    EXPECT_EQ(segmentsOf("[a](media:a.mp4) [b](media:b.mov)"),
              (Segments{video("a.mp4", "a"), markdown(" "), video("b.mov", "b")}));
    EXPECT_EQ(segmentsOf("[a](media:a.mp4)[b](media:b.webm)"),
              (Segments{video("a.mp4", "a"), video("b.webm", "b")}));
}

TEST(MediaSegments, anImageIsNoVideo)
{
    EXPECT_EQ(segmentsOf("![tide](media:a.mp4)"), Segments{markdown("![tide](media:a.mp4)")});
    // A bracket inside its caption has no "!" before it.
    EXPECT_EQ(segmentsOf("![a [tide](media:a.mp4)"),
              (Segments{markdown("![a "), video("a.mp4", "tide")}));
}

TEST(MediaSegments, onlyTheseEndingsInThisCaseAreVideos)
{
    for (const char *no : {"[a](media:a.MP4)", "[a](media:a.Mov)", "[a](media:a.avi)",
                           "[a](media:a.mp4?x)", "[a](media:.mp4)", "[a](media:)", "[a](media:mp4)",
                           "[a](Media:a.mp4)", "[a] (media:a.mp4)", "[a](media:a.mp4",
                           "[a](https://x.example/a.mp4)", "[a](media:a.mp4 \"title\")"})
        EXPECT_EQ(segmentsOf(no), Segments{markdown(no)}) << no;
}

TEST(MediaSegments, aBlankInThePathIsEncoded)
{
    EXPECT_EQ(segmentsOf("[a](media:my clip.mp4)"), Segments{video("my%20clip.mp4", "a")});
    EXPECT_EQ(segmentsOf("[a](media:100%.mp4)"), Segments{video("100%25.mp4", "a")});
}

TEST(MediaSegments, anEmptyCaptionStaysEmpty)
{
    EXPECT_EQ(segmentsOf("[](media:a.mp4)"), Segments{video("a.mp4", "")});
}

TEST(MediaSegments, captionAndPathMayHoldAlmostAnything)
{
    EXPECT_EQ(segmentsOf("[a [b\nc](media:a.mp4)"), Segments{video("a.mp4", "a [b\nc")});
    EXPECT_EQ(segmentsOf("[a](media:x[b](media:y.mp4)"),
              Segments{video("x%5Bb%5D(media:y.mp4", "a")});
    EXPECT_EQ(segmentsOf("[a](media:x[b.mp4)](media:c.mp4)"),
              (Segments{video("x%5Bb.mp4", "a"), markdown("](media:c.mp4)")}));
}

TEST(MediaSegments, aVideoThatIsNoneLeavesNoTrace)
{
    EXPECT_EQ(segmentsOf("a [x](media:../me.mp4) b"), (Segments{markdown("a "), markdown(" b")}));
    EXPECT_EQ(segmentsOf("[x](media:../me.mp4)[a](media:a.mp4)"), Segments{video("a.mp4", "a")});
    EXPECT_EQ(segmentsOf("[x](media:%2e%2e/me.mp4) b"), Segments{markdown(" b")});
}

TEST(MediaSegments, butStandsWhereThereIsNothingElse)
{
    EXPECT_EQ(segmentsOf("[x](media:../me.mp4)[y](media:..\\me.mov)"),
              Segments{markdown("[x](media:../me.mp4)[y](media:..\\me.mov)")});
}

TEST(MediaSegments, theProgramsOwnServiceIsTheDefault)
{
    const Segments segments = mediaSegments(text("[a](media:a.mp4)"));
    EXPECT_EQ(std::get<VideoSegment>(segments.first()).url,
              velto::service::apiBaseURL().resolved(QUrl(text("/v1/media/a.mp4"))));
}

TEST(GrowingSegmentsTest, tellsWhatChanged)
{
    GrowingSegments growing(service);
    using Change = GrowingSegments::Change;
    EXPECT_EQ(growing.append(u"before"), (Change{0, true}));
    EXPECT_EQ(growing.append(u" [a](media:a.mp4"), (Change{0, true}));
    EXPECT_EQ(growing.append({}), (Change{1, false}));
    EXPECT_EQ(growing.append(u")"), (Change{0, false}));
    EXPECT_EQ(growing.segments(), (Segments{markdown("before "), video("a.mp4", "a")}));
    EXPECT_EQ(growing.append(u"x"), (Change{2, false}));
    EXPECT_EQ(growing.append(u"y"), (Change{2, true}));
}

TEST(GrowingSegmentsTest, appendsInPlace)
{
    GrowingSegments growing(service);
    growing.append(QString(100'000, u'a'));
    const auto textNow = [&] {
        return std::get<MarkdownSegment>(growing.segments().last()).text.constData();
    };
    growing.append(QString(30'000, u'b')); // room to grow into
    const QChar *place = textNow();
    for (int i = 0; i < 1000; ++i)
        growing.append(u"c");
    EXPECT_EQ(textNow(), place);
}

TEST(MediaSegments, costsNoMoreForHostileTexts)
{
    const auto secondsFor = [](const QString &piece, qsizetype size) {
        const QString whole = piece.repeated(size / piece.size());
        const double start = velto::test::processSeconds();
        (void)mediaSegments(whole, service);
        return velto::test::processSeconds() - start;
    };
    for (const char *piece :
         {"[", "![", "[]", "[](media:", "[a](media:x", "[a](media:../x.mp4)", "[a](media:a.mp4)",
          "[a](media:a.mp4) x ", "](media:", ")", "[a](media:.mp4)", "plain text "})
        EXPECT_LT(secondsFor(text(piece), 1'000'000), 5.0) << piece;
}

RC_GTEST_PROP(MediaSegmentsProperty, isWhatTheExpressionFinds, ())
{
    const QString whole = *generatedText();
    RC_ASSERT(mediaSegments(whole, service) == expected(whole));
}

RC_GTEST_PROP(MediaSegmentsProperty, isWhatTheExpressionFindsInAnyUnits, ())
{
    const auto units = *rc::gen::container<std::vector<char16_t>>(
        rc::gen::oneOf(rc::gen::element<char16_t>(u'[', u']', u'(', u')', u'!', 0xd83d, 0xde00),
                       rc::gen::inRange<char16_t>(0, 0xffff)));
    const QString around = QString::fromUtf16(units.data(), static_cast<qsizetype>(units.size()));
    const QString whole = around + text("[a](media:b.mp4)") + around + text("](media:c.mov)");
    RC_ASSERT(mediaSegments(whole, service) == expected(whole));
}

RC_GTEST_PROP(GrowingSegmentsProperty, equalsTheWholeAtEveryPrefix, ())
{
    checkCuts(*generatedText(), {1});
}

RC_GTEST_PROP(GrowingSegmentsProperty, equalsTheWholeHoweverItIsCut, ())
{
    const QString whole = *generatedText();
    checkCuts(whole, *rc::gen::container<std::vector<qsizetype>>(rc::gen::inRange(1, 30)));
}
