// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/incrementalmarkdown.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ctime>

using namespace velto::markdown;

namespace
{

/// A release build needs a fiftieth of this, and instrumented code some twenty times that.
constexpr double secondsForRepeated = 2;
constexpr qsizetype repeatedSize = 50'000;

double now()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void abortUnless(bool isTrue)
{
    if (!isTrue)
        std::abort();
}

} // namespace

/// A text reads the same in two pieces as at once, and takes no longer than its size allows when it
/// is repeated. The first byte says where to cut.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 2)
        return 0;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 1),
                                           static_cast<qsizetype>(size) - 1);
    if (text.isEmpty())
        return 0;
    IncrementalMarkdown markdown;
    const qsizetype cut = data[0] % (text.size() + 1);
    markdown.append(QStringView(text).first(cut));
    abortUnless(markdown.content() == MarkdownContent(QStringView(text).first(cut)));
    markdown.append(QStringView(text).sliced(cut));
    abortUnless(markdown.content() == MarkdownContent(text));
    if (data[0] % 64 != 0) // the long ones take most of the time
        return 0;
    const QString repeated = text.repeated(repeatedSize / text.size() + 1);
    const double start = now();
    const MarkdownContent content(repeated);
    abortUnless(now() - start < secondsForRepeated);
    return 0;
}
