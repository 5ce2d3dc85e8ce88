// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/incrementalmarkdown.h"

#include <cmark-gfm-core-extensions.h>
#include <cmark-gfm-extension_api.h>
#include <cmark-gfm/parser.h>

#include <QByteArray>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

/// What it costs to read Markdown, in time of this process: other programs don't count.
///
/// markdown.parse_vs_cmark_*: the library building its own tree and freeing it, over
/// MarkdownContent of the same text. markdown.append_vs_reparse_200k: 200 KB in appends of 16
/// bytes, over reading the whole text so far at each of them (sampled). markdown.append_growth_*:
/// an append of 4 characters in the last tenth of a text over one in the first.
/// markdown.hostile_1m_ms: the slowest of the megabytes made to be slow.
namespace
{

using namespace velto::markdown;

double now()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

double seconds(const std::function<void()> &work)
{
    const double start = now();
    work();
    return now() - start;
}

/// Answers as an assistant writes them: prose with emphasis, code, links, lists, tables, fences.
QString answers(qsizetype size)
{
    const QString section = QStringLiteral(
        "## Step %1: build the *importer*\n\n"
        "The importer reads each record, checks it against the **schema** and writes it to "
        "`store.db`. "
        "It skips what it has seen before, so that a second run costs little; see the "
        "[manual](https://example.org/manual?step=%1) for the switches that change this.\n\n"
        "1. Read the file line by line, since it may be larger than memory.\n"
        "2. Decode each line; a line that can't be decoded goes to `rejected.txt`.\n"
        "   - keep its number\n   - keep the *reason*\n\n"
        "```python\ndef records(path):\n    with open(path) as lines:\n        for number, line in "
        "enumerate(lines):\n            yield number, json.loads(line)\n```\n\n"
        "| Switch | Meaning | Default |\n|--------|---------|--------:|\n"
        "| `--fast` | no checks at all | off |\n| `--jobs` | how many at a time | %1 |\n\n"
        "> Note: the order of the records is kept, whatever the number of jobs.\n\n");
    QString text;
    for (int step = 1; text.size() < size; ++step)
        text += section.arg(step);
    return text.first(size);
}

double librarySeconds(const QByteArray &bytes)
{
    cmark_gfm_core_extensions_ensure_registered();
    return seconds([&bytes] {
        cmark_parser *parser = cmark_parser_new(CMARK_OPT_DEFAULT);
        for (const char *name : {"autolink", "strikethrough", "tagfilter", "tasklist", "table"})
            cmark_parser_attach_syntax_extension(parser, cmark_find_syntax_extension(name));
        cmark_parser_feed(parser, bytes.constData(), static_cast<std::size_t>(bytes.size()));
        cmark_node_free(cmark_parser_finish(parser));
        // Finishing has cleared these for every parser of the process.
        cmark_manage_extensions_special_characters(parser, 1);
        cmark_parser_free(parser);
    });
}

double ownSeconds(const QString &text)
{
    return seconds([&text] {
        const MarkdownContent content(text);
        if (content.blocks.isEmpty())
            qFatal("nothing read");
    });
}

void parse(const char *name, qsizetype size, int passes)
{
    const QString text = answers(size);
    const QByteArray bytes = text.toUtf8();
    std::vector<double> ratios;
    std::vector<double> own;
    for (int pass = 0; pass < passes; ++pass) {
        own.push_back(ownSeconds(text));
        ratios.push_back(librarySeconds(bytes) / own.back());
    }
    std::printf("%s: %.2f ms\n", name, median(own) * 1e3);
    std::printf("RESULT markdown.%s %.3f\n", name, median(ratios));
}

void appendAgainstReparse()
{
    static constexpr qsizetype step = 16;
    const QString text = answers(200'000);
    const double appending = seconds([&text] {
        IncrementalMarkdown markdown;
        for (qsizetype at = 0; at < text.size(); at += step)
            markdown.append(QStringView(text).sliced(at, std::min(step, text.size() - at)));
    });
    // One in 125 of the whole texts, evenly spread.
    constexpr qsizetype sample = 125;
    const double reparsing =
        sample * seconds([&text] {
            for (qsizetype end = step; end <= text.size(); end += step * sample)
                const MarkdownContent content(QStringView(text).first(end));
        });
    std::printf("200 KB in appends of 16: %.0f ms; read anew at each: %.0f ms\n", appending * 1e3,
                reparsing * 1e3);
    std::printf("RESULT markdown.append_vs_reparse_200k %.5f\n", appending / reparsing);
}

void growth(const char *name, const QString &text, const QString &before = {})
{
    constexpr qsizetype step = 4;
    std::vector<double> ratios;
    double last = 0;
    const qsizetype tenth = text.size() / 10;
    for (int pass = 0; pass < 5; ++pass) {
        IncrementalMarkdown markdown;
        markdown.append(before);
        std::vector<double> tenths;
        for (int part = 0; part < 10; ++part) {
            tenths.push_back(seconds([&] {
                for (qsizetype at = part * tenth; at < (part + 1) * tenth; at += step)
                    markdown.append(QStringView(text).sliced(at, step));
            }));
        }
        last = tenths.back() / (static_cast<double>(tenth) / step);
        ratios.push_back(tenths.back() / tenths.front());
    }
    std::printf("%s: %.2f us an append at the end\n", name, last * 1e6);
    std::printf("RESULT markdown.%s %.3f\n", name, median(ratios));
}

QString listOf(int items)
{
    QString text;
    for (int i = 0; i < items; ++i)
        text += QStringLiteral("- item **%1** with `code` and a few words more\n").arg(i, 4);
    return text;
}

QString codeOf(qsizetype size)
{
    return QStringLiteral("    result = compute(values, 42)  # as above\n").repeated(size / 45);
}

void hostile()
{
    constexpr qsizetype size = 1'000'000;
    const char *units[] = {
        "|a",           "|a|\n|-|\n", "-|-\n-|-|-\n", "a|b\n-|-\n", ":-\n",      ">",
        "- ",           "1. ",        "- a\n",        "- a\n\n",    "[",         "![",
        "[a](",         "*[a](b)",    "![[]()",       "**[a](b)**", "~[a](b)",   "*a_ ",
        "*a **a ",      "_a ",        "~a~",          "`a",         "x <? ",     "x <!A ",
        "x <![CDATA[ ", "<a b=\"",    "a@b.c ",       "a@",         "http://a ", "www.a ",
        "&#35;",        "\\\n",       "a  \n",        "a\n",        "\n",        "\"",
        "[a]: b\n",     "x <b>\n",    "# a\n",        ">\n\n",      "a\r",       "http://a.<",
        "www._",        "w.aba@",     "~-~~  ~=",     "} _*__-*",   "[\n[a\n"};
    double slowest = 0;
    const char *which = "";
    for (const char *unit : units) {
        const QString piece = QString::fromLatin1(unit);
        const double taken = ownSeconds(u'x' + piece.repeated(size / piece.size()));
        if (taken > slowest) {
            slowest = taken;
            which = unit;
        }
    }
    const QString wide = QStringLiteral("|a").repeated(100) + u'\n' +
                         QStringLiteral("|-").repeated(100) + u'\n' +
                         QStringLiteral("|b\n").repeated(size / 3);
    slowest = std::max(slowest, ownSeconds(wide));
    const QString header =
        QStringLiteral("*\n") + QStringLiteral("-:*\n").repeated(size / 4) + QStringLiteral("-:");
    slowest = std::max(slowest, ownSeconds(header));
    const QString nested =
        QStringLiteral("- ").repeated(size / 4) + u'a' + QString(size / 2, u'\n');
    slowest = std::max(slowest, ownSeconds(nested));
    std::printf("slowest unit: %s\n",
                QByteArray(which).toPercentEncoding(" <>[]()*|-").constData());
    std::printf("RESULT markdown.hostile_1m_ms %.1f\n", slowest * 1e3);
}

} // namespace

int main()
{
    parse("parse_vs_cmark_100k", 100'000, 41);
    parse("parse_vs_cmark_1m", 1'000'000, 15);
    appendAgainstReparse();
    growth("append_growth_1m", answers(1'000'000));
    growth("append_growth_fence_500k", codeOf(500'000), QStringLiteral("```\n"));
    growth("append_growth_list_5000", listOf(5000));
    hostile();
    return 0;
}
