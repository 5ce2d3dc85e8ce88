// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "viewtest.h"

#include "markdown/render/codebox.h"
#include "markdown/render/componentbox.h"
#include "markdown/render/imagebox.h"
#include "markdown/render/imageproviders.h"
#include "markdown/render/listbox.h"
#include "markdown/render/tablebox.h"

namespace velto::markdown
{

namespace
{

class MarkdownBlocksTest : public ViewTest
{
protected:
    Theme withMargins(const Theme &theme, int level, std::optional<qreal> top,
                      std::optional<qreal> bottom)
    {
        return theme.heading(level, {[=](const BlockConfiguration &block) {
                                 return block.label.margin(top, bottom);
                             }});
    }
};

/// A provider that counts and gives boxes of one size.
class CountingProvider final : public ImageProvider
{
public:
    QQuickItem *makeImage(const QUrl &url, const QString &label, QQuickItem *parent) override
    {
        asked.append(url);
        labels.append(label);
        auto *item = new QQuickItem(parent);
        item->setImplicitWidth(80);
        item->setImplicitHeight(20);
        return item;
    }
    QList<QUrl> asked;
    QStringList labels;
};

class OneInlineImage final : public InlineImageProvider
{
public:
    QCoro::Task<base::Result<QImage>> image(QUrl url, QString) override
    {
        asked.append(url);
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(Qt::red);
        co_return image;
    }
    QList<QUrl> asked;
};

} // namespace

TEST_F(MarkdownBlocksTest, EachKindOfBlockHasItsView)
{
    show("> q\n\n- b\n\n1. n\n\n~~~\nc\n~~~\n\n<div>\n\np\n\n# h\n\n|t|\n|-|\n\n---\n");
    ASSERT_EQ(view.boxes().count(), 9);
    EXPECT_NE(box<BlockSequence>(0), nullptr);
    EXPECT_NE(box<ListBox>(1), nullptr);
    EXPECT_NE(box<ListBox>(2), nullptr);
    EXPECT_NE(box<CodeBox>(3), nullptr);
    ASSERT_NE(box<TextBox>(4), nullptr);
    EXPECT_EQ(box<TextBox>(4)->kind(), TextBox::Kind::Html);
    ASSERT_NE(box<TextBox>(5), nullptr);
    EXPECT_EQ(box<TextBox>(5)->kind(), TextBox::Kind::Paragraph);
    ASSERT_NE(box<TextBox>(6), nullptr);
    EXPECT_EQ(box<TextBox>(6)->kind(), TextBox::Kind::Heading);
    EXPECT_NE(box<TableBox>(7), nullptr);
    EXPECT_NE(box<DividerBox>(8), nullptr);
}

TEST_F(MarkdownBlocksTest, CodeAndHtmlLoseOneFinalLineFeed)
{
    show("~~~\na\n\n~~~\n\n<div>\nx\n");
    EXPECT_EQ(text(0).text().plainText(), QStringLiteral("a\n"));
    EXPECT_EQ(text(1).text().plainText(), QStringLiteral("<div>\nx"));
}

TEST_F(MarkdownBlocksTest, AFencedBlockGivesItsLanguageToTheStyle)
{
    QStringList languages;
    view.setTheme(Theme().codeBlock({[&](const CodeBlockConfiguration &code) {
        languages.append(code.language.value_or(QString()) + QLatin1Char('|') + code.content);
        return code.label;
    }}));
    show("~~~cpp x\na\n~~~");
    EXPECT_EQ(languages.value(0), QStringLiteral("cpp x|a"));
}

TEST_F(MarkdownBlocksTest, TheHighlighterGivesTheTextOfCode)
{
    class Shouting final : public CodeSyntaxHighlighter
    {
        AttributedString highlightCode(const QString &code, const std::optional<QString> &language,
                                       const TextAttributes &attributes) const override
        {
            AttributedString text;
            text.append(language.value_or(QString()) + code.toUpper(), attributes);
            return text;
        }
    };
    view.setCodeSyntaxHighlighter(std::make_shared<Shouting>());
    show("~~~x\nabc\n~~~");
    EXPECT_EQ(text(0).text().plainText(), QStringLiteral("xABC"));
}

TEST_F(MarkdownBlocksTest, AHeadingOfEachLevelHasItsStyle)
{
    Theme theme;
    for (int level = 1; level <= 6; ++level) {
        theme = theme.heading(level, {[level](const BlockConfiguration &block) {
                                  return block.label.textStyle(FontSize{10.0 + level});
                              }});
    }
    view.setTheme(theme);
    show("# 1\n## 2\n### 3\n#### 4\n##### 5\n###### 6");
    for (std::size_t index = 0; index < 6; ++index)
        EXPECT_EQ(text(index).text().runs()[0].attributes.fontProperties.scaledSize(),
                  11.0 + static_cast<double>(index));
}

TEST_F(MarkdownBlocksTest, AHeadingWithoutAStyleHasTheSizeOfTheText)
{
    view.setTheme(Theme().text(FontSize{15.0}));
    show("text\n\n#### heading");
    EXPECT_EQ(text(1).text().runs()[0].attributes, text(0).text().runs()[0].attributes);
}

TEST_F(MarkdownBlocksTest, OfMarginsThatMeetTheGreaterHolds)
{
    view.setTheme(withMargins(withMargins(Theme(), 1, 5, 9), 2, 20, 30));
    show("# a\n\n## b\n\n# c");
    EXPECT_EQ(gap(0), 20);
    EXPECT_EQ(gap(1), 30);
}

TEST_F(MarkdownBlocksTest, AnAbsentMarginLeavesItToTheOtherBlock)
{
    view.setTheme(withMargins(withMargins(Theme(), 1, std::nullopt, 3), 2, 40, std::nullopt));
    show("# a\n\ntext\n\n## b");
    EXPECT_EQ(gap(0), 3);
    EXPECT_EQ(gap(1), 40);
}

TEST_F(MarkdownBlocksTest, ParagraphsKeepADistanceByThemselves)
{
    show("a\n\nb");
    EXPECT_GT(gap(0), 5);
}

TEST_F(MarkdownBlocksTest, AMarginWithinAListReachesOutOfIt)
{
    view.setTheme(Theme().listItem(
        {[](const BlockConfiguration &block) { return block.label.margin(33, 44); }}));
    show("a\n\n- b\n\nc");
    EXPECT_EQ(gap(0), 33);
    EXPECT_EQ(gap(1), 44);
}

TEST_F(MarkdownBlocksTest, ATightListHasNoGapsAndALooseOneHas)
{
    show("- a\n- b");
    const qreal tight = placeOf(text(1)).y() - placeOf(text(0)).y() - text(0).size().height();
    EXPECT_EQ(tight, 0);
    show("- a\n\n- b");
    const qreal loose = placeOf(text(1)).y() - placeOf(text(0)).y() - text(0).size().height();
    EXPECT_GT(loose, 5);
}

TEST_F(MarkdownBlocksTest, ATightListKeepsItsDistanceFromWhatFollows)
{
    show("- a\n- b\n\nc");
    EXPECT_GT(gap(0), 5);
}

TEST_F(MarkdownBlocksTest, ListLevelsCountFromOneAndMarkersKnowTheirNumber)
{
    QStringList asked;
    view.setTheme(
        Theme()
            .bulletedListMarker({[&](const ListMarkerConfiguration &marker) {
                asked.append(QStringLiteral("b%1").arg(marker.listLevel));
                return BlockView::text(QStringLiteral("-"));
            }})
            .numberedListMarker({[&](const ListMarkerConfiguration &marker) {
                asked.append(QStringLiteral("n%1/%2").arg(marker.listLevel).arg(marker.itemNumber));
                return BlockView::text(QStringLiteral("1"));
            }})
            .taskListMarker({[&](const TaskListMarkerConfiguration &marker) {
                asked.append(marker.isCompleted ? QStringLiteral("x") : QStringLiteral("o"));
                return BlockView::text(QStringLiteral("x"));
            }}));
    show("- a\n\n  7. b\n  8. c\n     - d\n- e\n\nf\n\n* [x] g\n* [ ] h");
    EXPECT_EQ(asked, QStringList({QStringLiteral("b1"), QStringLiteral("n2/7"),
                                  QStringLiteral("n2/8"), QStringLiteral("b3"),
                                  QStringLiteral("b1"), QStringLiteral("x"), QStringLiteral("o")}));
}

TEST_F(MarkdownBlocksTest, NumbersFromNineToTenKeepTheColumn)
{
    show("9. a\n10. b\n11. c");
    const qreal withTwoDigits = placeOf(text(1)).x();
    EXPECT_EQ(placeOf(text(0)).x(), withTwoDigits);
    show("1. a\n2. b");
    EXPECT_EQ(placeOf(text(0)).x(), withTwoDigits);
}

TEST_F(MarkdownBlocksTest, AWiderNumberWidensTheColumnOfTheWholeList)
{
    show("1. a");
    const qreal narrow = placeOf(text(0)).x();
    show("99999. a\n100000. b");
    EXPECT_GT(placeOf(text(0)).x(), narrow);
    EXPECT_EQ(placeOf(text(0)).x(), placeOf(text(1)).x());
}

TEST_F(MarkdownBlocksTest, DigitsOfNumbersHaveOneWidth)
{
    const TextAttributes attributes = Theme().numberedListMarker()({1, 1}).textStyle().applied({});
    const auto widthOf = [&](const char *number) {
        AttributedString text;
        text.append(QString::fromLatin1(number), attributes);
        return LaidText(text, {1, Qt::AlignLeft, false}).idealWidth();
    };
    EXPECT_DOUBLE_EQ(widthOf("11111"), widthOf("88888"));
}

TEST_F(MarkdownBlocksTest, AColumnIsAsWideAsItsWidestCell)
{
    show("|a|b|\n|-|-|\n|wider than that|c|\n|d|e|");
    const TableBounds &bounds = box<TableBox>(0)->bounds();
    ASSERT_EQ(bounds.columns.size(), 2);
    ASSERT_EQ(bounds.rows.size(), 3);
    EXPECT_GE(bounds.columns[0].size, text(2).naturalWidth());
    EXPECT_LT(bounds.columns[0].size, text(2).naturalWidth() + 40);
    EXPECT_LT(bounds.columns[1].size, bounds.columns[0].size);
    EXPECT_EQ(bounds.columns[1].position, bounds.columns[0].end());
    EXPECT_EQ(bounds.rows[2].position, bounds.rows[1].end());
    EXPECT_EQ(bounds.bounds.width(), bounds.columns[1].end());
}

TEST_F(MarkdownBlocksTest, ColumnsAlignTheirCells)
{
    show("|n|l|c|r|\n|-|:-|:-:|-:|\n|wide wide|wide wide|wide wide|wide wide|\n|x|x|x|x|");
    const TableBounds &bounds = box<TableBox>(0)->bounds();
    const auto middle = [&](std::size_t index) {
        TextBox &cell = text(index);
        const QRectF letter = cell.laid().rectangles(0, 1).constFirst();
        return placeOf(cell).x() + letter.center().x();
    };
    for (const std::size_t column : {0, 1})
        EXPECT_LT(middle(8 + column), bounds.columns[static_cast<int>(column)].position + 30);
    EXPECT_NEAR(middle(10), bounds.columns[2].position + bounds.columns[2].size / 2, 2);
    EXPECT_GT(middle(11), bounds.columns[3].end() - 30);
}

TEST_F(MarkdownBlocksTest, ARowWithFewerCellsLeavesTheRestEmpty)
{
    show("|a|b|c|\n|-|-|-|\n|d|");
    EXPECT_EQ(texts().size(), 4U);
    EXPECT_EQ(box<TableBox>(0)->bounds().columns.size(), 3);
}

TEST_F(MarkdownBlocksTest, CellsKnowRowAndColumnAndTheHeaderIsRowZero)
{
    QStringList asked;
    view.setTheme(Theme().tableCell({[&](const TableCellConfiguration &cell) {
        asked.append(QStringLiteral("%1/%2 %3")
                         .arg(cell.row)
                         .arg(cell.column)
                         .arg(cell.content.renderPlainText().trimmed()));
        return cell.label;
    }}));
    show("|a|b|\n|-|-|\n|c|d|");
    EXPECT_EQ(asked, QStringList({QStringLiteral("0/0 a"), QStringLiteral("0/1 b"),
                                  QStringLiteral("1/0 c"), QStringLiteral("1/1 d")}));
}

TEST_F(MarkdownBlocksTest, ATableThatIsTooWideScrollsInsideItself)
{
    QByteArray text("|");
    QByteArray line("|");
    for (int column = 0; column < 30; ++column) {
        text += "a column of words|";
        line += "-|";
    }
    show(text + "\n" + line);
    auto *table = box<TableBox>(0);
    EXPECT_EQ(table->size().width(), 500);
    EXPECT_GT(table->maximumOffset(), 500);
    EXPECT_TRUE(table->scrollTo(100));
    EXPECT_EQ(table->offset(), 100);
    table->scrollTo(1e9);
    EXPECT_EQ(table->offset(), table->maximumOffset());
    EXPECT_EQ(view.implicitWidth(), 0);
}

TEST(SharedWidthsTest, WideColumnsGiveWay)
{
    EXPECT_EQ(TableBox::sharedWidths({50, 60}, 200, 30), QList<qreal>({50, 60}));
    EXPECT_EQ(TableBox::sharedWidths({50, 600}, 200, 30), QList<qreal>({50, 150}));
    EXPECT_EQ(TableBox::sharedWidths({500, 600}, 200, 30), QList<qreal>({100, 100}));
    EXPECT_EQ(TableBox::sharedWidths({500, 600, 20}, 200, 150), QList<qreal>({150, 150, 20}));
    EXPECT_EQ(TableBox::sharedWidths({}, 200, 30), QList<qreal>());
}

TEST_F(MarkdownBlocksTest, ALongLineOfCodeScrollsWhenTheStyleSaysSo)
{
    view.setTheme(Theme().codeBlock(
        {[](const CodeBlockConfiguration &code) { return code.label.scrolling(); }}));
    show(QByteArray("~~~\n" + QByteArray(400, 'x') + "\n~~~").constData());
    EXPECT_EQ(box<CodeBox>(0)->size().width(), 500);
    EXPECT_GT(box<CodeBox>(0)->maximumOffset(), 500);
    view.setTheme(Theme());
    settle();
    EXPECT_EQ(box<CodeBox>(0)->maximumOffset(), 0);
}

TEST(CodePiecesTest, BeginBehindEveryFewLines)
{
    std::vector<qsizetype> starts;
    continueStarts(starts, u"a\nb\nc\nd", 2);
    EXPECT_EQ(starts, (std::vector<qsizetype>{0, 4}));
    continueStarts(starts, u"a\nb\nc\nd\ne\nf\ng", 2);
    EXPECT_EQ(starts, (std::vector<qsizetype>{0, 4, 8, 12}));
}

/// Plain code that remembers what was asked for.
class Recording final : public CodeSyntaxHighlighter
{
public:
    mutable QList<qsizetype> parts; ///< Where they began.

    [[nodiscard]] AttributedString highlightCode(const QString &code,
                                                 const std::optional<QString> &,
                                                 const TextAttributes &attributes) const override
    {
        AttributedString text;
        text.append(code, attributes);
        return text;
    }
    [[nodiscard]] std::unique_ptr<CodeHighlight>
    highlight(const std::optional<QString> &language,
              const TextAttributes &attributes) const override;
};

class RecordingHighlight final : public CodeHighlight
{
public:
    RecordingHighlight(const Recording &recording, std::unique_ptr<CodeHighlight> plain)
        : m_recording(recording)
        , m_plain(std::move(plain))
    {}
    [[nodiscard]] qsizetype grow(const QString &code) override { return m_plain->grow(code); }
    [[nodiscard]] const QString &text() const override { return m_plain->text(); }
    [[nodiscard]] AttributedString part(qsizetype from, qsizetype to) const override
    {
        m_recording.parts.append(from);
        return m_plain->part(from, to);
    }

private:
    const Recording &m_recording;
    const std::unique_ptr<CodeHighlight> m_plain;
};

std::unique_ptr<CodeHighlight> Recording::highlight(const std::optional<QString> &language,
                                                    const TextAttributes &attributes) const
{
    return std::make_unique<RecordingHighlight>(
        *this, PlainTextCodeSyntaxHighlighter().highlight(language, attributes));
}

TEST_F(MarkdownBlocksTest, CodeThatGrowsIsAskedForItsLastPieceOnly)
{
    const auto recording = std::make_shared<Recording>();
    view.setCodeSyntaxHighlighter(recording);
    QString code = QStringLiteral("```\n");
    for (int line = 10; line < 110; ++line)
        code += QStringLiteral("line %1\n").arg(line, 3);
    show(code.toUtf8().constData());
    EXPECT_EQ(recording->parts, (QList<qsizetype>{0, 360, 720}));
    const std::vector<TextBox *> before = texts();
    const qreal height = view.implicitHeight();
    recording->parts.clear();
    view.append(QStringLiteral("one more\nand one"));
    settle();
    EXPECT_EQ(recording->parts, QList<qsizetype>{720});
    EXPECT_EQ(texts(), before);
    EXPECT_TRUE(text(2).text().plainText().endsWith(QStringLiteral("line 109\none more\nand one")));
    EXPECT_GT(view.implicitHeight(), height);
}

/// Marks every second character, and the first one anew with each of them.
class Marking final : public CodeSyntaxHighlighter
{
public:
    [[nodiscard]] AttributedString highlightCode(const QString &code,
                                                 const std::optional<QString> &,
                                                 const TextAttributes &attributes) const override
    {
        AttributedString text;
        for (qsizetype at = 0; at < code.size(); ++at) {
            TextAttributes marked = attributes;
            if (at % 2 == 1)
                marked.kerning = 1;
            if (at == 0)
                marked.kerning = static_cast<qreal>(code.size());
            text.append(code.mid(at, 1), marked);
        }
        return text;
    }
};

TEST_F(MarkdownBlocksTest, AnyHighlighterMayChangeWhatItGaveBefore)
{
    view.setCodeSyntaxHighlighter(std::make_shared<Marking>());
    show("```\nab");
    view.append(QStringLiteral("cd"));
    settle();
    const QList<TextRun> &runs = text(0).text().runs();
    ASSERT_EQ(text(0).text().plainText(), QStringLiteral("abcd"));
    EXPECT_EQ(runs[0].attributes.kerning, 4);
    EXPECT_EQ(runs[3].attributes.kerning, 1);
}

TEST(CodeHighlightTest, PartsOfTheWholeJoinToIt)
{
    const Marking marking;
    const auto highlight = marking.highlight(std::nullopt, {});
    EXPECT_EQ(highlight->grow(QStringLiteral("abc")), 0);
    EXPECT_EQ(highlight->grow(QStringLiteral("abcdefg")), 0);
    const AttributedString whole = marking.highlightCode(QStringLiteral("abcdefg"), {}, {});
    EXPECT_EQ(highlight->text(), QStringLiteral("abcdefg"));
    EXPECT_EQ(highlight->part(0, 7), whole);
    EXPECT_EQ(highlight->part(2, 5).runs(), whole.runs().mid(2, 3));
    EXPECT_TRUE(highlight->part(7, 7).isEmpty());
}

TEST(CodeHighlightTest, PlainCodeIsNewFromWhereItGrew)
{
    const PlainTextCodeSyntaxHighlighter plain;
    const auto highlight = plain.highlight(std::nullopt, {});
    EXPECT_EQ(highlight->grow(QStringLiteral("abc")), 0);
    EXPECT_EQ(highlight->grow(QStringLiteral("abcd")), 3);
    EXPECT_EQ(highlight->part(2, 4).plainText(), QStringLiteral("cd"));
}

TEST_F(MarkdownBlocksTest, ARightToLeftParagraphStandsOnTheRight)
{
    show("\u05e9\u05dc\u05d5\u05dd\n\nhello");
    EXPECT_GT(text(0).laid().rectangles(0, 4).constFirst().left(), 400);
    EXPECT_LT(text(1).laid().rectangles(0, 4).constFirst().left(), 1);
}

TEST_F(MarkdownBlocksTest, TheMarkersOfARightToLeftListStandOnTheRight)
{
    show("- \u05e9\u05dc\u05d5\u05dd");
    EXPECT_EQ(placeOf(text(0)).x(), 0);
    EXPECT_LT(text(0).size().width(), 480);
    show("- hello");
    EXPECT_GT(placeOf(text(0)).x(), 15);
}

TEST_F(MarkdownBlocksTest, APictureAloneComesFromTheProvider)
{
    CountingProvider provider;
    view.setImageProvider(&provider);
    view.setBaseURL(QUrl(QStringLiteral("https://example.org/a/")));
    show("![alt](b/c.png)");
    ASSERT_NE(box<ImageBox>(0), nullptr);
    EXPECT_EQ(provider.asked, QList<QUrl>({QUrl(QStringLiteral("https://example.org/a/b/c.png"))}));
    EXPECT_EQ(provider.labels, QStringList({QStringLiteral("alt")}));
    EXPECT_EQ(box<ImageBox>(0)->size().height(), 20);
}

TEST_F(MarkdownBlocksTest, PicturesHaveABaseOfTheirOwn)
{
    CountingProvider provider;
    view.setImageProvider(&provider);
    view.setBaseURL(QUrl(QStringLiteral("https://example.org/")));
    view.setImageBaseURL(QUrl(QStringLiteral("https://pictures.example.org/")));
    show("![alt](c.png)");
    EXPECT_EQ(provider.asked.value(0), QUrl(QStringLiteral("https://pictures.example.org/c.png")));
}

TEST_F(MarkdownBlocksTest, PicturesInARowFlow)
{
    CountingProvider provider;
    view.setImageProvider(&provider);
    view.setWidth(180);
    show("![a](a)\n![b](b)\n![c](c)");
    EXPECT_EQ(provider.asked.size(), 3);
    EXPECT_GT(box<ImageBox>(0)->size().height(), 40);
    EXPECT_LT(box<ImageBox>(0)->size().height(), 60);
}

TEST_F(MarkdownBlocksTest, APictureInALineIsDrawnInTheText)
{
    auto provider = std::make_shared<OneInlineImage>();
    view.setInlineImageProvider(provider);
    show("text ![alt](https://example.org/x.png) text");
    settle();
    EXPECT_EQ(provider->asked, QList<QUrl>({QUrl(QStringLiteral("https://example.org/x.png"))}));
    EXPECT_EQ(text(0).text().runs()[1].image, QStringLiteral("https://example.org/x.png"));
    EXPECT_GE(text(0).size().height(), 30);
    const QImage drawn = window.grabWindow();
    bool foundRed = false;
    for (int x = 0; x < drawn.width() && !foundRed; ++x)
        foundRed = drawn.pixelColor(x, 15) == QColor(Qt::red);
    EXPECT_TRUE(foundRed);
}

TEST_F(MarkdownBlocksTest, AStyleCanHandACodeBlockToAComponentOfItsOwn)
{
    view.setTheme(Theme().codeBlock({[](const CodeBlockConfiguration &) {
        return BlockView::component(QUrl(QStringLiteral("qrc:/absent.qml")));
    }}));
    show("~~~\na\n~~~");
    EXPECT_NE(box<ComponentBox>(0), nullptr);
}

TEST_F(MarkdownBlocksTest, TheStylesOfAQuoteReachTheTextWithin)
{
    view.setTheme(Theme().blockquote({[](const BlockConfiguration &block) {
        return block.label.textStyle(FontSize{9.0}).padding({30, 4, 0, 0});
    }}));
    show("> - a");
    EXPECT_EQ(text(0).text().runs()[0].attributes.fontProperties.scaledSize(), 9);
    EXPECT_GT(placeOf(text(0)).x(), 30);
    EXPECT_EQ(placeOf(text(0)).y(), 4);
}

TEST_F(MarkdownBlocksTest, ASoftBreakIsASpaceUnlessLineBreaksAreKept)
{
    show("a\nb");
    EXPECT_EQ(text(0).text().plainText(), QStringLiteral("a b"));
    view.setKeepsLineBreaks(true);
    settle();
    EXPECT_EQ(text(0).text().plainText(), QStringLiteral("a\nb"));
}

} // namespace velto::markdown
