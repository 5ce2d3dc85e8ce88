// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "generatedtext.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace velto::test
{

namespace
{

const QString byteOrderMark(QChar(0xfeff));

const QStringList &lineStarts()
{
    static const QStringList starts{{},           {},
                                    {},           {},
                                    {},           u"> "_qs,
                                    u">"_qs,      u"- "_qs,
                                    u"* "_qs,     u"+ "_qs,
                                    u"1. "_qs,    u"2) "_qs,
                                    u"10. "_qs,   u"-"_qs,
                                    u"  "_qs,     u"   "_qs,
                                    u"    "_qs,   u"\t"_qs,
                                    u"      "_qs, u"- [ ] "_qs,
                                    u"- [x] "_qs, u"1. [X] "_qs,
                                    u"# "_qs,     u"### "_qs,
                                    u"- - "_qs,   u"> > "_qs,
                                    u">\t"_qs,    u"-\t"_qs,
                                    u"> - "_qs,   u"- > "_qs};
    return starts;
}

const QStringList &wholeLines()
{
    static const QStringList lines{u"```"_qs,
                                   u"```cpp"_qs,
                                   u"~~~"_qs,
                                   u"~~~~ a b"_qs,
                                   u"````"_qs,
                                   u"---"_qs,
                                   u"==="_qs,
                                   u"-"_qs,
                                   u"="_qs,
                                   u"***"_qs,
                                   u"- - -"_qs,
                                   u"|a|b|"_qs,
                                   u"a|b"_qs,
                                   u"|-|-|"_qs,
                                   u"-|:-:"_qs,
                                   u":-"_qs,
                                   u"|:--|--:|"_qs,
                                   u"| x |"_qs,
                                   u"|"_qs,
                                   u"<div>"_qs,
                                   u"</div>"_qs,
                                   u"<!-- c"_qs,
                                   u"c -->"_qs,
                                   u"<?php"_qs,
                                   u"?>"_qs,
                                   u"<!DOCTYPE x>"_qs,
                                   u"<![CDATA["_qs,
                                   u"]]>"_qs,
                                   u"<pre>"_qs,
                                   u"</pre>"_qs,
                                   u"<script>"_qs,
                                   u"<b>x</b>"_qs,
                                   u"<a href='x'>"_qs,
                                   u"[a]: /u"_qs,
                                   u"[a]: <x y> 't'"_qs,
                                   u"[b]:"_qs,
                                   u"/v \"t\""_qs,
                                   u"[B]: /b 'two"_qs,
                                   u"lines'"_qs,
                                   u"[\u00e9]: /e"_qs,
                                   u"[a]: /second"_qs,
                                   u"[a]: /u x"_qs,
                                   u"#"_qs,
                                   u"## h ##"_qs,
                                   u"*"_qs};
    return lines;
}

const QStringList &pieces()
{
    static const QStringList pieces{u"a"_qs,
                                    u"word "_qs,
                                    u" "_qs,
                                    u"*"_qs,
                                    u"**"_qs,
                                    u"_"_qs,
                                    u"__"_qs,
                                    u"~"_qs,
                                    u"~~"_qs,
                                    u"`"_qs,
                                    u"``"_qs,
                                    u"["_qs,
                                    u"]"_qs,
                                    u"!["_qs,
                                    u"]("_qs,
                                    u"(/u)"_qs,
                                    u")"_qs,
                                    u"[a]"_qs,
                                    u"[b][a]"_qs,
                                    u"[A][]"_qs,
                                    u"[b]"_qs,
                                    u"![a]"_qs,
                                    u"<"_qs,
                                    u">"_qs,
                                    u"<b>"_qs,
                                    u"</b>"_qs,
                                    u"<!-- x -->"_qs,
                                    u"<http://x.y>"_qs,
                                    u"<a@b.c>"_qs,
                                    u"www.x.org"_qs,
                                    u"http://x.y/(z)"_qs,
                                    u"https://x.org."_qs,
                                    u"a@b.org"_qs,
                                    u"&amp;"_qs,
                                    u"&copy"_qs,
                                    u"&#35;"_qs,
                                    u"\\"_qs,
                                    u"\\*"_qs,
                                    u"\\|"_qs,
                                    u"|"_qs,
                                    u"\""_qs,
                                    u"'"_qs,
                                    u":"_qs,
                                    u"-"_qs,
                                    u"="_qs,
                                    u"#"_qs,
                                    u"  "_qs,
                                    u"\t"_qs,
                                    u"1."_qs,
                                    u"\u00e9"_qs,
                                    u"\u4e2d"_qs,
                                    u"\U0001f600"_qs,
                                    byteOrderMark,
                                    QString(QChar(0)),
                                    QString(QChar(0xd83d)),
                                    QString(QChar(0xde00)),
                                    u"\u00a0"_qs,
                                    u"\u2028"_qs};
    return pieces;
}

rc::Gen<QString> oneOf(const QStringList &list)
{
    return rc::gen::elementOf(std::vector<QString>(list.begin(), list.end()));
}

rc::Gen<QString> inlineText()
{
    return rc::gen::map(rc::gen::container<std::vector<QString>>(oneOf(pieces())),
                        [](const std::vector<QString> &parts) {
                            QString text;
                            for (std::size_t i = 0; i < std::min<std::size_t>(parts.size(), 12);
                                 ++i)
                                text += parts[i];
                            return text;
                        });
}

rc::Gen<QString> lineEnd()
{
    return rc::gen::weightedElement<QString>({{12, u"\n"_qs},
                                              {5, u"\n\n"_qs},
                                              {1, u"\r\n"_qs},
                                              {1, u"\r"_qs},
                                              {1, u"\n \n"_qs},
                                              {1, u"  \n"_qs},
                                              {1, u"\\\n"_qs},
                                              {1, QString()}});
}

rc::Gen<QString> line()
{
    const auto body = rc::gen::weightedOneOf<QString>({{3, oneOf(wholeLines())},
                                                       {3, inlineText()},
                                                       {2, oneOf(pieces())},
                                                       {1, rc::gen::just(QString())}});
    return rc::gen::apply([](const QString &outer, const QString &inner, const QString &text,
                             const QString &end) { return outer + inner + text + end; },
                          oneOf(lineStarts()), oneOf(lineStarts()), body, lineEnd());
}

const QString &writtenText()
{
    static const QString text = uR"(# Release notes

Thanks for waiting. **Version 2** is out, see the [changelog][log] or
<https://example.org/news?a=1&b=2>.

1. Unpack it:

   ```sh
   tar xf velto.tar.gz   # as anyone
   ```

2. Start it with `./velto`
   - without a window: `--quiet`
   - in Dutch

   > It keeps your settings.
   > Ask *me* if not.

3. Done

- [x] built
- [ ] ~~shipped~~ shown

| Name | Size | Note |
|:-----|-----:|------|
| a    | 1 KB | `x \| y` |
| b    | 20 KB |
c

![A picture](media/p.png "of it")
Second line\
third line with mail to a.person@example.org

<details>
<summary>More</summary>

Text inside.

</details>

Heading below
-------------

    indented code

    more of it

***

[log]: https://example.org/changelog "All of it"
Last words: www.example.org/end_
)"_qs;
    return text;
}

} // namespace

rc::Gen<QString> generatedText()
{
    return rc::gen::map(
        rc::gen::container<std::vector<QString>>(line()), [](const std::vector<QString> &lines) {
            QString text;
            for (std::size_t i = 0; i < std::min<std::size_t>(lines.size(), 25); ++i)
                text += lines[i];
            return text;
        });
}

rc::Gen<QString> mutatedText()
{
    const qsizetype size = writtenText().size();
    const auto edit =
        rc::gen::tuple(rc::gen::inRange<qsizetype>(0, size), rc::gen::inRange<qsizetype>(0, 40),
                       rc::gen::oneOf(line(), oneOf(pieces())));
    return rc::gen::map(
        rc::gen::container<std::vector<std::tuple<qsizetype, qsizetype, QString>>>(3, edit),
        [](const auto &edits) {
            QString text = writtenText();
            for (const auto &[at, removed, added] : edits)
                text.replace(std::min(at, text.size()), removed, added);
            return text;
        });
}

rc::Gen<std::vector<qsizetype>> cutsOf(qsizetype size)
{
    return rc::gen::map(
        rc::gen::container<std::vector<qsizetype>>(rc::gen::inRange<qsizetype>(0, size + 1)),
        [](std::vector<qsizetype> cuts) {
            std::ranges::sort(cuts);
            return cuts;
        });
}

} // namespace velto::test
