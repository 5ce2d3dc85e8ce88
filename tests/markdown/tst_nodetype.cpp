// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/model/htmltag.h"
#include "markdown/model/nodetype.h"

#include <gtest/gtest.h>

#include <utility>

using namespace velto::markdown;

TEST(NodeType, hasTheNamesOfTheParser)
{
    const std::pair<const char *, NodeType> rows[] = {
        {"document", NodeType::Document},
        {"block_quote", NodeType::Blockquote},
        {"list", NodeType::List},
        {"item", NodeType::Item},
        {"code_block", NodeType::CodeBlock},
        {"html_block", NodeType::HtmlBlock},
        {"custom_block", NodeType::CustomBlock},
        {"paragraph", NodeType::Paragraph},
        {"heading", NodeType::Heading},
        {"thematic_break", NodeType::ThematicBreak},
        {"text", NodeType::Text},
        {"softbreak", NodeType::SoftBreak},
        {"linebreak", NodeType::LineBreak},
        {"code", NodeType::Code},
        {"html_inline", NodeType::Html},
        {"custom_inline", NodeType::CustomInline},
        {"emph", NodeType::Emphasis},
        {"strong", NodeType::Strong},
        {"link", NodeType::Link},
        {"image", NodeType::Image},
        {"attribute", NodeType::InlineAttributes},
        {"NONE", NodeType::None},
        {"<unknown>", NodeType::Unknown},
        {"strikethrough", NodeType::Strikethrough},
        {"table", NodeType::Table},
        {"table_header", NodeType::TableHead},
        {"table_row", NodeType::TableRow},
        {"table_cell", NodeType::TableCell},
        {"tasklist", NodeType::TaskListItem},
    };
    int order = 0;
    for (const auto &[name, type] : rows) {
        EXPECT_EQ(nodeType(name), type) << name;
        EXPECT_EQ(typeString(type), name);
        EXPECT_EQ(static_cast<int>(type), order++) << name;
    }
}

TEST(NodeType, isAbsentForAnyOtherName)
{
    EXPECT_EQ(nodeType(""), std::nullopt);
    EXPECT_EQ(nodeType("Document"), std::nullopt);
    EXPECT_EQ(nodeType("footnote"), std::nullopt);
}

TEST(BrokenTree, saysWhatIsWrongWithIt)
{
    EXPECT_EQ(brokentree::unknownType("odd"), u"Unknown node type 'odd' found."_qs);
    EXPECT_EQ(brokentree::noListItem("table"),
              u"Expected a list item but got a 'table' instead."_qs);
    EXPECT_EQ(brokentree::noTableRow("item"), u"Expected a table row but got a 'item' instead."_qs);
    EXPECT_EQ(brokentree::noTableCell("text"),
              u"Expected a table cell but got a 'text' instead."_qs);
    EXPECT_EQ(brokentree::listWithoutType(), u"cmark reported a list node without a list type."_qs);
}

TEST(HTMLTag, isTheFirstTag)
{
    EXPECT_EQ(HTMLTag::first(u"<br>"_qs), HTMLTag{u"br"_qs});
    EXPECT_EQ(HTMLTag::first(u"<br/>"_qs), HTMLTag{u"br"_qs});
    EXPECT_EQ(HTMLTag::first(u"</B>"_qs), HTMLTag{u"B"_qs});
    EXPECT_EQ(HTMLTag::first(u"<h1 class=\"x\">"_qs), HTMLTag{u"h1"_qs});
    EXPECT_EQ(HTMLTag::first(u"<my-tag>"_qs), HTMLTag{u"my"_qs});
    EXPECT_EQ(HTMLTag::first(u"a <i>b</i>"_qs), HTMLTag{u"i"_qs});
}

TEST(HTMLTag, isAbsentWhereThereIsNone)
{
    EXPECT_EQ(HTMLTag::first(QString()), std::nullopt);
    EXPECT_EQ(HTMLTag::first(u"text"_qs), std::nullopt);
    EXPECT_EQ(HTMLTag::first(u"<!-- br -->"_qs), std::nullopt);
    EXPECT_EQ(HTMLTag::first(u"< br>"_qs), std::nullopt);
    EXPECT_EQ(HTMLTag::first(u"<br"_qs), std::nullopt);
}

TEST(HTMLTag, isFoundInATagOfAnyLength)
{
    const QString tag = u"<a href='"_qs + QString(300'000, u'x') + u"'>"_qs;
    EXPECT_EQ(HTMLTag::first(tag), HTMLTag{u"a"_qs});
}
