// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/code/language.h"

#include <QString>

namespace velto::presentation
{
namespace
{

constexpr KeywordSet swiftWords{
    "import", "let",     "var",         "func",   "class",     "struct", "enum",    "protocol",
    "if",     "else",    "extension",   "guard",  "switch",    "case",   "default", "for",
    "while",  "in",      "return",      "throw",  "throws",    "try",    "catch",   "async",
    "await",  "do",      "true",        "false",  "nil",       "self",   "Self",    "init",
    "deinit", "public",  "private",     "static", "internal",  "final",  "lazy",    "weak",
    "actor",  "unowned", "fileprivate", "where",  "typealias", "is",     "as"};
constexpr KeywordSet scriptWords{
    "import", "from",    "export",    "default",    "const",     "let",        "var",   "function",
    "class",  "if",      "else",      "switch",     "case",      "for",        "while", "return",
    "throw",  "try",     "catch",     "finally",    "async",     "await",      "new",   "this",
    "super",  "extends", "type",      "implements", "interface", "enum",       "true",  "false",
    "null",   "void",    "typeof",    "undefined",  "of",        "instanceof", "in",    "as",
    "public", "private", "protected", "readonly"};
constexpr KeywordSet jsonWords{"true", "false", "null"};
constexpr KeywordSet shellWords{"if",    "then",     "else",   "fi",     "for",     "in",  "do",
                                "done",  "while",    "case",   "esac",   "echo",    "set", "unset",
                                "local", "function", "return", "export", "readonly"};
constexpr KeywordSet yamlWords{"true", "false", "null", "yes", "no", "on", "off"};
constexpr KeywordSet pythonWords{
    "def",  "class",  "import", "from",    "as",    "if",    "elif",  "else",
    "for",  "while",  "in",     "return",  "yield", "with",  "try",   "lambda",
    "pass", "except", "raise",  "finally", "break", "True",  "False", "continue",
    "None", "and",    "or",     "not",     "is",    "async", "await"};
constexpr KeywordSet rubyWords{"def",    "end",   "class",  "module",  "if",     "elsif", "else",
                               "unless", "case",  "when",   "while",   "until",  "for",   "do",
                               "return", "yield", "begin",  "rescue",  "ensure", "true",  "false",
                               "nil",    "self",  "extend", "require", "include"};
constexpr KeywordSet goWords{
    "package", "import",  "func",  "var",       "const", "type", "struct",  "map",  "chan",
    "go",      "defer",   "if",    "interface", "else",  "for",  "range",   "case", "switch",
    "return",  "default", "break", "true",      "false", "nil",  "continue"};
constexpr KeywordSet rustWords{
    "fn",    "let",    "mut",  "const",    "static", "struct", "enum",  "impl",  "trait", "pub",
    "use",   "mod",    "if",   "else",     "match",  "for",    "while", "loop",  "break", "true",
    "false", "return", "self", "continue", "Self",   "as",     "async", "await", "move",  "ref"};
constexpr KeywordSet noWords{};

constexpr QStringView hash = u"#";
constexpr QStringView slashes = u"//";

constexpr Language swift{slashes, true, false, &swiftWords};
constexpr Language script{slashes, true, false, &scriptWords};
constexpr Language json{{}, false, true, &jsonWords};
constexpr Language shell{hash, false, false, &shellWords};
constexpr Language yaml{hash, false, true, &yamlWords};
constexpr Language python{hash, false, false, &pythonWords};
constexpr Language markup{{}, true, false, &noWords};
constexpr Language styleSheet{slashes, true, false, &noWords};
constexpr Language ruby{hash, false, false, &rubyWords};
constexpr Language go{slashes, true, false, &goWords};
constexpr Language rust{slashes, true, false, &rustWords};

struct Name
{
    QStringView name;
    const Language *language;
};

constexpr Name names[] = {
    {u"swift", &swift},     {u"js", &script},       {u"javascript", &script}, {u"mjs", &script},
    {u"cjs", &script},      {u"ts", &script},       {u"typescript", &script}, {u"tsx", &script},
    {u"jsx", &script},      {u"json", &json},       {u"jsonc", &json},        {u"sh", &shell},
    {u"bash", &shell},      {u"zsh", &shell},       {u"shell", &shell},       {u"yaml", &yaml},
    {u"yml", &yaml},        {u"py", &python},       {u"python", &python},     {u"html", &markup},
    {u"xml", &markup},      {u"vue", &markup},      {u"svelte", &markup},     {u"css", &styleSheet},
    {u"scss", &styleSheet}, {u"sass", &styleSheet}, {u"rb", &ruby},           {u"ruby", &ruby},
    {u"go", &go},           {u"golang", &go},       {u"rs", &rust},           {u"rust", &rust},
};

} // namespace

const Language *languageNamed(QStringView name)
{
    const QString lowerCase = name.toString().toLower();
    for (const Name &known : names) {
        if (known.name == lowerCase)
            return known.language;
    }
    return nullptr;
}

} // namespace velto::presentation
