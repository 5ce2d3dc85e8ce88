// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "highlighter/naivehighlighter.h"
#include "presentation/code/growingcode.h"
#include "presentation/code/syntaxhighlighter.h"

#include <QFile>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <random>

/// What it costs to colour code.
///
/// highlight.min_mb_s: MB of UTF-8 a second of processor time on 1 MB of code, for the slowest
/// family. highlight.growth: cost of a character of 1 MB over that of 10 KB, for the worst family;
/// the 10 KB are cut out of the 1 MB all over, so that both are the same code. Printed besides: the
/// same rules as regular expressions on 20 KB, and 1 MB that arrives 16 characters at a time.
namespace
{

using velto::presentation::GrowingCode;
using velto::presentation::SyntaxHighlighter;

constexpr qsizetype fullSize = 1'000'000;
constexpr qsizetype smallSize = 10'000;
constexpr qsizetype naiveSize = 20'000;
constexpr qsizetype pieceSize = 16;
constexpr int passes = 15;

/// The sections of a sample in random order, over and over: no processor learns it by heart.
QString code(const QString &family)
{
    QFile file(QStringLiteral(VELTO_CODE_SAMPLES "/sample.") + family);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no sample of %s", qPrintable(family));
    const QString sample = QString::fromUtf8(file.readAll());
    QStringList sections = sample.split(QStringLiteral("\n\n"));
    if (sections.size() < 5)
        sections = sample.split(u'\n');
    std::minstd_rand random(1); // NOLINT(bugprone-random-generator-seed): the same in every run
    QString text;
    while (text.size() < fullSize)
        text += sections[static_cast<qsizetype>(random() % sections.size())] + u'\n';
    return text.left(fullSize);
}

/// The least processor time, in seconds, of some passes.
template<typename Work>
double leastSeconds(int times, Work work)
{
    double least = 1e9;
    for (int i = 0; i < times; ++i) {
        const std::clock_t start = std::clock();
        work();
        least = std::min(least, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return least;
}

struct Costs
{
    double rate = 0;
    double growth = 0;
};

Costs measure(const QString &family)
{
    const QString text = code(family);
    size_t tokens = 0;
    const double full =
        leastSeconds(passes, [&] { tokens = SyntaxHighlighter::tokenRanges(text, family).size(); });
    size_t smallTokens = 0;
    const double small = leastSeconds(passes, [&] {
        for (qsizetype at = 0; at + smallSize <= text.size(); at += smallSize) {
            smallTokens +=
                SyntaxHighlighter::tokenRanges(QStringView(text).sliced(at, smallSize), family)
                    .size();
        }
    });
    const double growing = leastSeconds(1, [&] {
        GrowingCode code(family);
        for (qsizetype at = 0; at < text.size(); at += pieceSize)
            code.append(QStringView(text).sliced(at, std::min(pieceSize, text.size() - at)));
        if (code.tokens().size() != tokens)
            qFatal("%s: what grows ends up with other tokens", qPrintable(family));
    });
    const QString part = text.left(naiveSize);
    const double naive = leastSeconds(1, [&] {
        if (naiveTokens(part, family) != SyntaxHighlighter::tokenRanges(part, family))
            qFatal("%s: not the tokens of the rules", qPrintable(family));
    });
    if (smallTokens == 0)
        qFatal("%s: nothing was coloured", qPrintable(family));
    const auto megabytes = [](const QString &of) {
        return static_cast<double>(of.toUtf8().size()) / 1e6;
    };
    const Costs costs{megabytes(text) / full, full / small};
    std::printf(
        "%-6s %7.1f MB/s  %6zu tokens  growth %.2f  in pieces %6.1f MB/s  naive %.4f MB/s\n",
        qPrintable(family), costs.rate, tokens, costs.growth, megabytes(text) / growing,
        megabytes(part) / naive);
    return costs;
}

} // namespace

int main()
{
    Costs worst{1e9, 0};
    for (const QString &family : languageFamilies()) {
        const Costs costs = measure(family);
        worst.rate = std::min(worst.rate, costs.rate);
        worst.growth = std::max(worst.growth, costs.growth);
    }
    std::printf("RESULT highlight.min_mb_s %.1f\n", worst.rate);
    std::printf("RESULT highlight.growth %.3f\n", worst.growth);
    return 0;
}
