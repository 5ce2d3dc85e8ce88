// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/media/mediasegments.h"

#include "presentation/media/mediaurl.h"
#include "service/apibaseurl.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velto::presentation
{
namespace
{

constexpr QStringView targetStart = u"(media:";
constexpr std::array<QStringView, 3> videoEndings{u".mp4", u".webm", u".mov"};

bool isVideoPath(QStringView path)
{
    return std::ranges::any_of(videoEndings, [path](QStringView ending) {
        return path.size() > ending.size() && path.endsWith(ending);
    });
}

} // namespace

GrowingSegments::GrowingSegments(QUrl baseURL)
    : m_baseURL(std::move(baseURL))
{}

// Of all links that could end with a closing parenthesis the one that began first counts, and
// whether it is one of a video is then the same for all. So one link is enough to remember.
GrowingSegments::Change GrowingSegments::append(QStringView text)
{
    if (text.isEmpty())
        return {m_segments.size(), false};
    const bool canBeLonger = m_hasTail || (m_hasStandIn && m_vanished.isEmpty());
    if (std::exchange(m_hasStandIn, false))
        m_segments.clear();
    const qsizetype first = m_segments.size() - (m_hasTail ? 1 : 0);
    bool wasCut = false;
    qsizetype taken = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!endsLink(text[i], m_read++))
            continue;
        extendTail(text.sliced(taken, i + 1 - taken));
        taken = i + 1;
        if (endsWithVideo()) {
            cutVideo();
            wasCut = true;
        }
        m_link.reset();
    }
    extendTail(text.sliced(taken));
    if (m_segments.isEmpty()) {
        m_segments.append(MarkdownSegment{m_vanished});
        m_hasStandIn = true;
    }
    return {first, canBeLonger && !wasCut};
}

bool GrowingSegments::endsLink(QChar unit, qsizetype at)
{
    const QChar previous = std::exchange(m_previous, unit);
    if (continuesTarget(unit, at))
        return false;
    if (unit == u'[') {
        if (m_open < 0 && previous != u'!')
            m_open = at;
    } else if (unit == u']' && m_open >= 0) {
        m_caption = {std::exchange(m_open, -1), at, 0};
        m_matched = 0;
    }
    return unit == u')' && m_link.has_value();
}

bool GrowingSegments::continuesTarget(QChar unit, qsizetype at)
{
    if (m_matched < 0)
        return false;
    if (unit != targetStart[m_matched]) {
        m_matched = -1;
        return false;
    }
    if (++m_matched == targetStart.size()) {
        m_matched = -1;
        if (!m_link)
            m_link = Link{m_caption.start, m_caption.captionEnd, at + 1};
    }
    return true;
}

void GrowingSegments::extendTail(QStringView text)
{
    if (text.isEmpty())
        return;
    if (!std::exchange(m_hasTail, true))
        m_segments.append(MarkdownSegment());
    tail() += text;
}

bool GrowingSegments::endsWithVideo()
{
    const QStringView whole = tail();
    return isVideoPath(whole.sliced(m_link->pathStart).chopped(1));
}

void GrowingSegments::cutVideo()
{
    const QString link = tail().sliced(m_link->start);
    const qsizetype caption = m_link->captionEnd - m_link->start;
    const qsizetype path = m_link->pathStart - m_link->start;
    if (m_link->start > 0) {
        tail().truncate(m_link->start);
        m_vanished.clear();
    } else {
        m_segments.removeLast();
    }
    m_hasTail = false;
    m_read = 0;
    m_open = -1;
    if (const auto url = mediaURL(QStringView(link).sliced(path).chopped(1), m_baseURL)) {
        m_segments.append(VideoSegment{*url, link.sliced(1, caption - 1)});
        m_vanished.clear();
    } else if (m_segments.isEmpty()) {
        m_vanished += link;
    }
}

QList<MediaSegment> mediaSegments(const QString &text, const QUrl &baseURL)
{
    GrowingSegments segments(baseURL);
    segments.append(text);
    return segments.segments();
}

QList<MediaSegment> mediaSegments(const QString &text)
{
    return mediaSegments(text, service::apiBaseURL());
}

} // namespace velto::presentation
