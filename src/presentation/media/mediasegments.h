// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>
#include <QUrl>

#include <optional>
#include <variant>

namespace velto::presentation
{

struct MarkdownSegment
{
    QString text;
    bool operator==(const MarkdownSegment &) const = default;
};

struct VideoSegment
{
    QUrl url; ///< Of the service; asking for it takes the access token.
    QString caption;
    bool operator==(const VideoSegment &) const = default;
};

using MediaSegment = std::variant<MarkdownSegment, VideoSegment>;

/// A text cut around its videos, while it grows. After every `append` the segments are those of the
/// whole text so far.
///
/// A video is a link "[caption](media:path)" that is no image and whose path ends in .mp4, .webm or
/// .mov. One whose path names nothing of the service leaves no trace, unless nothing else is there.
/// An append costs what it brings, and what is cut off when a video ends in it.
class GrowingSegments final
{
public:
    /// What an append did. The segments before `first` are as they were.
    struct Change
    {
        qsizetype first = 0;
        /// The segment at `first` is Markdown and only became longer, and nothing follows it.
        bool isLonger = false;
        bool operator==(const Change &) const = default;
    };

    /// `baseURL` is where the service is.
    explicit GrowingSegments(QUrl baseURL);

    /// Whoever keeps a copy of the last segment's text makes the next append cost that text.
    Change append(QStringView text);
    /// Never empty; a text without anything is one empty Markdown segment.
    [[nodiscard]] const QList<MediaSegment> &segments() const { return m_segments; }

private:
    /// A link whose target has begun; positions in the tail.
    struct Link
    {
        qsizetype start = 0;
        qsizetype captionEnd = 0;
        qsizetype pathStart = 0;
    };

    /// True when `unit`, which stands at `at` in the tail, ends a link.
    [[nodiscard]] bool endsLink(QChar unit, qsizetype at);
    [[nodiscard]] bool continuesTarget(QChar unit, qsizetype at);
    void extendTail(QStringView text);
    /// Whether the tail, which ends with a link, ends with that of a video.
    [[nodiscard]] bool endsWithVideo();
    void cutVideo();
    [[nodiscard]] QString &tail() { return std::get<MarkdownSegment>(m_segments.last()).text; }

    QUrl m_baseURL;
    QList<MediaSegment> m_segments{MarkdownSegment()};
    bool m_hasTail = false;   ///< The last segment is Markdown that goes on.
    bool m_hasStandIn = true; ///< The only segment stands for a text of which nothing is left.
    QString m_vanished;       ///< What has left no trace, while there is nothing else.
    qsizetype m_read = 0;     ///< Units of the tail that have been read.
    QChar m_previous;         ///< The unit before those.
    qsizetype m_open = -1;    ///< The first bracket that could begin a caption, or -1.
    Link m_caption;           ///< The last caption that has ended.
    qsizetype m_matched = -1; ///< Units of "(media:" that have followed it, or -1.
    std::optional<Link> m_link;
};

/// The segments of a whole text.
[[nodiscard]] QList<MediaSegment> mediaSegments(const QString &text, const QUrl &baseURL);
/// At the service that the program talks to.
[[nodiscard]] QList<MediaSegment> mediaSegments(const QString &text);

} // namespace velto::presentation
