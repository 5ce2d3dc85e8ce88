// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "naivehighlighter.h"

#include <QHash>
#include <QRegularExpression>

using velto::presentation::TextRange;
using velto::presentation::TokenColor;
using velto::presentation::TokenRange;
using velto::presentation::TokenRanges;

namespace
{

/// Characters that word boundaries look through, and those that words consist of.
const QString extending = QStringLiteral(R"(\p{Grapheme_Extend}\p{Cf})");
const QString word = QStringLiteral(R"(\p{Alphabetic}\p{M}\p{Nd}\p{Pc}\x{200c}\x{200d})");

QRegularExpression regex(const QString &pattern)
{
    // With its compiler on, QRegularExpression drops very long matches without a word.
    static const bool isInterpreted = qputenv("QT_ENABLE_REGEXP_JIT", "0");
    static QHash<QString, QRegularExpression> compiled;
    auto found = compiled.find(pattern);
    if (found == compiled.end()) {
        // All Unicode line ends are line ends.
        const QRegularExpression made(QStringLiteral("(*ANY)") + pattern);
        if (!isInterpreted || !made.isValid())
            qFatal("%s: %s", qPrintable(pattern), qPrintable(made.errorString()));
        found = compiled.insert(pattern, made);
    }
    return *found;
}

bool matchesCharacter(const QString &set, char32_t codePoint)
{
    return regex(QStringLiteral("^[%1]$").arg(set))
        .match(QString::fromUcs4(&codePoint, 1))
        .hasMatch();
}

/// Half a surrogate pair is a character like any other to us, and an error to QRegularExpression.
QString withoutHalfPairs(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        else if (text[i].isSurrogate())
            text[i] = QChar(0xe000);
    }
    return text;
}

/// Whether each position comes after a part of a word, with extending characters looked through.
QList<bool> positionsAfterWord(const QString &text)
{
    QHash<char32_t, int> kinds; // 0 other, 1 word, 2 extending
    QList<bool> after(text.size() + 1, false);
    bool isAfterWord = false;
    for (qsizetype at = 0; at < text.size(); ++at) {
        char32_t codePoint = text[at].unicode();
        const bool isPair = text[at].isHighSurrogate();
        if (isPair)
            codePoint = QChar::surrogateToUcs4(text[at], text[at + 1]);
        if (!kinds.contains(codePoint)) {
            kinds[codePoint] = matchesCharacter(extending, codePoint) ? 2
                               : matchesCharacter(word, codePoint)    ? 1
                                                                      : 0;
        }
        if (kinds[codePoint] != 2)
            isAfterWord = kinds[codePoint] == 1;
        at += isPair ? 1 : 0;
        after[at + 1] = isAfterWord;
    }
    return after;
}

struct Family
{
    QString lineComment;
    bool hasBlockComments;
    bool hasKeys;
    QString keywords;
};

const QString script = QStringLiteral(
    "import from export default const let var function class if else switch case for while return "
    "throw try catch finally async await new this super extends implements interface type enum "
    "true false null undefined void typeof instanceof of in as readonly public private protected");

const QHash<QString, Family> &families()
{
    static const QString hash = QStringLiteral("#[^\n]*");
    static const QString slashes = QStringLiteral("//[^\n]*");
    static const QHash<QString, Family> all{
        {QStringLiteral("swift"),
         {slashes, true, false,
          QStringLiteral("import let var func class struct enum protocol extension if else guard "
                         "switch case default for while in return throw throws try catch async "
                         "await do true false nil self Self init deinit public private internal "
                         "fileprivate static final lazy weak unowned actor typealias where is "
                         "as")}},
        {QStringLiteral("js"), {slashes, true, false, script}},
        {QStringLiteral("ts"), {slashes, true, false, script}},
        {QStringLiteral("json"), {{}, false, true, QStringLiteral("true false null")}},
        {QStringLiteral("sh"),
         {hash, false, false,
          QStringLiteral("if then else fi for in do done while case esac function return export "
                         "echo set unset local readonly")}},
        {QStringLiteral("yaml"),
         {hash, false, true, QStringLiteral("true false null yes no on off")}},
        {QStringLiteral("py"),
         {hash, false, false,
          QStringLiteral("def class import from as if elif else for while in return yield lambda "
                         "with try except finally raise pass break continue True False None and "
                         "or not is async await")}},
        {QStringLiteral("html"), {{}, true, false, {}}},
        {QStringLiteral("css"), {slashes, true, false, {}}},
        {QStringLiteral("rb"),
         {hash, false, false,
          QStringLiteral("def end class module if elsif else unless case when while until for do "
                         "return yield begin rescue ensure true false nil self require include "
                         "extend")}},
        {QStringLiteral("go"),
         {slashes, true, false,
          QStringLiteral("package import func var const type struct interface map chan go defer if "
                         "else for range switch case default return break continue true false "
                         "nil")}},
        {QStringLiteral("rs"),
         {slashes, true, false,
          QStringLiteral("fn let mut const static struct enum impl trait pub use mod if else match "
                         "for while loop return break continue true false self Self as async await "
                         "move ref")}},
    };
    return all;
}

class Passes final
{
public:
    explicit Passes(const QString &text)
        : m_text(withoutHalfPairs(text))
        , m_afterWord(positionsAfterWord(m_text))
    {}

    void all(const QString &pattern, TokenColor color, int group = 0)
    {
        auto matches = regex(pattern).globalMatch(m_text);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            offer({match.capturedStart(group), match.capturedEnd(group)}, color);
        }
    }

    /// `pattern` between word boundaries; it starts and ends with a part of a word.
    void words(const QString &pattern, TokenColor color)
    {
        const QRegularExpression bounded =
            regex(QStringLiteral("(?:%1)(?![%2%3])").arg(pattern, word, extending));
        for (qsizetype at = 0; at < m_text.size(); ++at) {
            if (m_afterWord[at] || m_text[at].isLowSurrogate())
                continue;
            const auto match =
                bounded.match(m_text, at, QRegularExpression::NormalMatch,
                              QRegularExpression::AnchorAtOffsetMatchOption |
                                  QRegularExpression::DontCheckSubjectStringMatchOption);
            if (match.hasMatch()) {
                offer({at, match.capturedEnd()}, color);
                at = match.capturedEnd() - 1;
            }
        }
    }

    TokenRanges sorted()
    {
        std::ranges::sort(m_tokens, {}, [](const TokenRange &token) { return token.range.start; });
        return m_tokens;
    }

private:
    void offer(TextRange range, TokenColor color)
    {
        for (const TokenRange &token : m_tokens) {
            if (token.range.start < range.end && range.start < token.range.end)
                return;
        }
        m_tokens.push_back({range, color});
    }

    QString m_text;
    QList<bool> m_afterWord;
    TokenRanges m_tokens;
};

} // namespace

QStringList languageFamilies()
{
    QStringList names = families().keys();
    names.sort();
    return names;
}

QStringList keywordsOf(const QString &family)
{
    return families()[family].keywords.split(u' ', Qt::SkipEmptyParts);
}

TokenRanges naiveTokens(const QString &text, const QString &family)
{
    const Family rules = families()[family];
    Passes passes(text);
    if (!rules.lineComment.isEmpty())
        passes.all(rules.lineComment, TokenColor::Comment);
    if (rules.hasBlockComments)
        passes.all(QStringLiteral(R"(/\*[\s\S]*?\*/)"), TokenColor::Comment);
    const QString quoted =
        QStringLiteral(R"re(("(?:\\.|[^"\\])*")|('(?:\\.|[^'\\])*')|(`(?:\\.|[^`\\])*`))re");
    passes.all(quoted, TokenColor::String);
    passes.words(QStringLiteral(R"(\p{Nd}+(?:\.\p{Nd}+)?(?:[eE][+-]?\p{Nd}+)?)"),
                 TokenColor::Number);
    for (const QString &keyword : keywordsOf(family))
        passes.words(keyword, TokenColor::Keyword);
    if (rules.hasKeys) {
        // White space is what has Unicode's property of that name.
        const QString key =
            QStringLiteral(R"re((?m)^[ \t-]*"?([A-Za-z_][A-Za-z0-9_-]*)"?[\p{White_Space}]*:)re");
        passes.all(key, TokenColor::Key, 1);
    }
    return passes.sorted();
}
