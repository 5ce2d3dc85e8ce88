// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "codegenerator.h"

#include <vector>

namespace
{

using Pieces = std::vector<QString>;

const Pieces &commonPieces()
{
    static const Pieces pieces = [] {
        Pieces made;
        for (const char16_t *piece :
             {u"\"",         u"'",      u"`",      u"\\",     u"\n",     u"\r",  u"\r\n",
              u"\u2028",     u"\u2029", u"\x85",   u"\v",     u"\f",     u"#",   u"/",
              u"//",         u"/*",     u"*/",     u"*",      u" ",      u"\t",  u"-",
              u":",          u".",      u"e",      u"E",      u"+",      u"0",   u"1",
              u"23",         u"1.5e10", u"_",      u"a",      u"on",     u"key", u"é",
              u"\u0301",     u"\u200d", u"\u09be", u"\u0903", u"\u0661", u"中",  u"\U0001d7ce",
              u"\U0001f600", u"²",      u"\u00a0", u"\u3000", u"\u180e", u"ⓐ",   u"\"a\": 1",
              u"  key: ",    u"- x:",   u"\\\"",   u"\\\\",   u"\\\n",   u"{",   u"}",
              u",",          u"\uff9e", u"\u203f", u"Ⅷ"})
            made.push_back(QString::fromUtf16(piece));
        for (const char16_t unit : {0xd83d, 0xde00, 0x0000})
            made.push_back(QString(QChar(unit)));
        return made;
    }();
    return pieces;
}

Pieces withKeywords(const QStringList &keywords)
{
    Pieces pieces = commonPieces();
    for (const QString &keyword : keywords) {
        pieces.push_back(keyword);
        pieces.push_back(keyword + u' ');
    }
    return pieces;
}

QString joined(const Pieces &pieces)
{
    QString text;
    for (const QString &piece : pieces)
        text += piece;
    return text;
}

} // namespace

rc::Gen<QString> tokenSoup(const QStringList &keywords)
{
    const auto soupOf = [](const Pieces &pieces) {
        return rc::gen::map(rc::gen::container<Pieces>(rc::gen::elementOf(pieces)), joined);
    };
    // Few pieces meet each other more often.
    const auto few =
        rc::gen::mapcat(rc::gen::container<Pieces>(5, rc::gen::elementOf(commonPieces())), soupOf);
    return rc::gen::oneOf(few, soupOf(commonPieces()), soupOf(withKeywords(keywords)));
}

rc::Gen<QString> mutated(const QString &source, const QStringList &keywords)
{
    return rc::gen::exec([source, pieces = withKeywords(keywords)] {
        const auto from = *rc::gen::inRange<qsizetype>(0, source.size());
        QString text = source.mid(from, *rc::gen::inRange<qsizetype>(1, 400));
        for (int changes = *rc::gen::inRange(1, 6); changes > 0; --changes) {
            const auto at = *rc::gen::inRange<qsizetype>(0, text.size() + 1);
            const auto length = *rc::gen::inRange<qsizetype>(0, 20);
            switch (*rc::gen::inRange(0, 3)) {
            case 0:
                text.insert(at, *rc::gen::elementOf(pieces));
                break;
            case 1:
                text.remove(at, length);
                break;
            default:
                text.insert(at, text.mid(at, length));
            }
        }
        return text;
    });
}
