// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "viewtest.h"

#include "controls/tokens.h"
#include "markdown/render/imagebox.h"
#include "markdown/render/imageproviders.h"
#include "markdown/render/linkitem.h"
#include "markdown/render/listbox.h"
#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTextLayout>
#include <QtTest/qtestkeyboard.h>
#include <QtTest/qtestmouse.h>

namespace velto::markdown
{

namespace
{

using controls::Tokens;

class MarkdownViewTest : public ViewTest
{
protected:
    void focus() { view.forceActiveFocus(Qt::TabFocusReason); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&window, key, modifiers);
    }
    QPoint middleOf(TextBox &box, int from, int to)
    {
        const QPointF middle = box.laid().rectangles(from, to).constFirst().center();
        return (placeOf(box) + middle).toPoint();
    }
    /// The width of the same text in a document of its own.
    qreal freshWidth(const LaidText &laid)
    {
        return LaidText(laid.text(), {view.lineHeight(), Qt::AlignLeading, true}).idealWidth();
    }
    void press(QEvent::Type type, QPointF place, quint64 milliseconds)
    {
        QMouseEvent event(type, place, place, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        event.setTimestamp(milliseconds);
        QCoreApplication::sendEvent(&view, &event);
    }
    void hover(QPointF place)
    {
        QHoverEvent event(QEvent::HoverMove, place, place, place);
        QCoreApplication::sendEvent(&view, &event);
    }
    QList<LinkItem *> links()
    {
        QList<LinkItem *> found;
        for (QQuickItem *item : itemsBelow(&view)) {
            if (auto *link = dynamic_cast<LinkItem *>(item))
                found.append(link);
        }
        return found;
    }
};

QString longText(int paragraphs)
{
    QString text;
    for (int number = 0; number < paragraphs; ++number)
        text += QStringLiteral("Paragraph %1 has some words in it.\n\n").arg(number);
    return text;
}

} // namespace

TEST_F(MarkdownViewTest, ATextThatGrowsEditsItsParagraphInPlace)
{
    show("first\n\nsecond");
    const TextBox *box = &text(1);
    const LaidText *laid = &text(1).laid();
    view.append(QStringLiteral(" and *more*"));
    settle();
    EXPECT_EQ(&text(1), box);
    EXPECT_EQ(&text(1).laid(), laid);
    EXPECT_EQ(laid->text().plainText(), QStringLiteral("second and more"));
    EXPECT_EQ(laid->idealWidth(), freshWidth(*laid));
}

TEST_F(MarkdownViewTest, WhatWasReadDifferentlyBeforeIsCorrected)
{
    show("some **bol");
    view.append(QStringLiteral("d** text"));
    settle();
    EXPECT_EQ(text(0).text().plainText(), QStringLiteral("some bold text"));
    EXPECT_EQ(text(0).laid().idealWidth(), freshWidth(text(0).laid()));
    EXPECT_EQ(text(0).text().runs().size(), 3);
}

TEST_F(MarkdownViewTest, EveryPrefixShowsWhatTheWholeTextWould)
{
    const QString whole = QStringLiteral("# a\nb *c*\n- d\n- [x] e\n  1. f\n\n> "
                                         "g\n\n|h|i|\n|-|-|\n|j|\n\n~~~\nk\nl\n~~~\n![m](n)\n");
    Markdown other;
    other.setParentItem(window.contentItem());
    other.setWidth(500);
    for (const QChar c : whole) {
        view.append(QString(c));
        settle();
        other.setContent(MarkdownContent(view.text()));
        settle();
        std::vector<TextBox *> expected;
        other.boxes().collectTexts(expected);
        ASSERT_EQ(texts().size(), expected.size()) << qPrintable(view.text());
        for (std::size_t index = 0; index < expected.size(); ++index)
            ASSERT_EQ(text(index).text(), expected[index]->text()) << qPrintable(view.text());
        ASSERT_EQ(view.implicitHeight(), other.implicitHeight()) << qPrintable(view.text());
    }
}

TEST_F(MarkdownViewTest, AnyNumberOfDeltasIsParsedOnceAFrame)
{
    show("a");
    const QSignalSpy growing(&view, &Markdown::growing);
    for (int delta = 0; delta < 100; ++delta)
        view.append(QStringLiteral("b"));
    settle();
    EXPECT_EQ(growing.count(), 1);
    EXPECT_EQ(text(0).length(), 101);
}

TEST_F(MarkdownViewTest, NothingIsParsedWhileNobodyCanSee)
{
    show("a");
    view.setVisible(false);
    view.append(QStringLiteral("\n\nb"));
    settle();
    EXPECT_EQ(view.blockModel().rowCount(), 1);
    view.setVisible(true);
    settle();
    EXPECT_EQ(view.blockModel().rowCount(), 2);
    view.setY(5000);
    view.append(QStringLiteral("\n\nc"));
    settle();
    EXPECT_EQ(view.blockModel().rowCount(), 2);
    view.setY(0);
    settle();
    EXPECT_EQ(view.blockModel().rowCount(), 3);
}

TEST_F(MarkdownViewTest, AnotherTextReplacesTheFormer)
{
    show("a\n\nb");
    show("c");
    ASSERT_EQ(texts().size(), 1U);
    EXPECT_EQ(text(0).text().plainText(), QStringLiteral("c"));
}

TEST_F(MarkdownViewTest, OnlyBlocksThatShowHaveItems)
{
    view.setText(longText(2000));
    settle();
    EXPECT_LT(itemsBelow(&view).size(), 60);
    EXPECT_NE(view.boxes().at(0).item(), nullptr);
    view.setY(-20000);
    settle();
    EXPECT_EQ(view.boxes().at(0).item(), nullptr);
    EXPECT_GT(itemsBelow(&view).size(), 5);
    EXPECT_LT(itemsBelow(&view).size(), 60);
}

TEST_F(MarkdownViewTest, GuessedHeightsBecomeThoseOfTheText)
{
    QString text;
    for (int number = 0; number < 300; ++number)
        text += QStringLiteral("iiiiii ").repeated(number % 60) + QStringLiteral("W. WWWW\n\n");
    view.setText(text);
    settle();
    ASSERT_TRUE(test::waitUntil([&] {
        settle();
        return view.isMeasured();
    }));
    qreal sum = 0;
    for (qsizetype row = 0; row < view.boxes().count(); ++row) {
        auto *paragraph = box<TextBox>(row);
        ASSERT_EQ(paragraph->size().height(), paragraph->laid().size().height());
        sum = paragraph->rectangle().bottom();
    }
    EXPECT_EQ(view.implicitHeight(), sum);
}

TEST_F(MarkdownViewTest, ANewWidthLaysOutAnew)
{
    view.setText(QStringLiteral("word ").repeated(200));
    settle();
    const qreal before = view.implicitHeight();
    view.setWidth(250);
    settle();
    EXPECT_GT(view.implicitHeight(), before * 1.8);
}

TEST_F(MarkdownViewTest, PicturesForTheOtherSchemeAreLeftOutAndComeWithIt)
{
    Tokens::instance().setScheme(Tokens::Scheme::Light);
    show("a ![x](x#GH-Dark-Mode-Only)![y](y#gh-light-mode-only)");
    EXPECT_EQ(text(0).text().plainText(), QStringLiteral("a y"));
    Tokens::instance().setScheme(Tokens::Scheme::Dark);
    settle();
    EXPECT_EQ(text(0).text().plainText(), QStringLiteral("a x"));
    Tokens::instance().setScheme(Tokens::Scheme::NoPreference);
}

TEST_F(MarkdownViewTest, ColoursFollowTheSchemeWithoutLayingOutAgain)
{
    Tokens::instance().setScheme(Tokens::Scheme::Light);
    window.setColor(Tokens::instance().background());
    show("# MMMM");
    const LaidText *laid = &text(0).laid();
    const auto darkest = [&] {
        const QImage image = window.grabWindow().copy(0, 0, 100, 30);
        int lowest = 255;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                lowest = std::min(lowest, qGray(image.pixel(x, y)));
        }
        return lowest;
    };
    EXPECT_LT(darkest(), 100);
    Tokens::instance().setScheme(Tokens::Scheme::Dark);
    EXPECT_GT(darkest(), 150);
    EXPECT_EQ(&text(0).laid(), laid);
    Tokens::instance().setScheme(Tokens::Scheme::NoPreference);
}

TEST_F(MarkdownViewTest, SelectingAllAndCopyingGivesPlainText)
{
    show("# Head\n\nSome **bold** `code`.\n\n- one\n- two\n  1. three\n- [x] "
         "four\n\n|a|b|\n|-|-|\n|c|d|");
    view.selectAll();
    view.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              QString::fromUtf8("Head\n\nSome bold code.\n\n\u2610 one\n\u2610 two\n1. three\n"
                                "\u2611 four\n\na\tb\nc\td"));
}

TEST_F(MarkdownViewTest, DraggingSelectsAcrossBlocks)
{
    show("hello world\n\nsecond line");
    QTest::mousePress(&window, Qt::LeftButton, {}, middleOf(text(0), 6, 7));
    QTest::mouseMove(&window, middleOf(text(1), 3, 4));
    QTest::mouseMove(&window, middleOf(text(1), 5, 6) + QPoint(3, 0));
    QTest::mouseRelease(&window, Qt::LeftButton, {}, middleOf(text(1), 5, 6) + QPoint(3, 0));
    const QString selected = view.selectedText();
    EXPECT_TRUE(selected.endsWith(QStringLiteral("orld\n\nsecond"))) << qPrintable(selected);
    QTest::mouseClick(&window, Qt::LeftButton, {}, middleOf(text(0), 1, 2), 1000);
    EXPECT_EQ(view.selectedText(), QString());
}

TEST_F(MarkdownViewTest, ADoubleClickSelectsAWordAndAThirdTheParagraph)
{
    show("hello wonderful world");
    const QPoint place = middleOf(text(0), 8, 9);
    press(QEvent::MouseButtonDblClick, place, 1000);
    EXPECT_EQ(view.selectedText(), QStringLiteral("wonderful"));
    press(QEvent::MouseButtonPress, place, 1100);
    EXPECT_EQ(view.selectedText(), QStringLiteral("hello wonderful world"));
    press(QEvent::MouseButtonPress, place, 9000);
    EXPECT_EQ(view.selectedText(), QString());
}

TEST_F(MarkdownViewTest, TheKeyboardSelects)
{
    show("one two\n\nthree");
    focus();
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(view.selectedText(), QStringLiteral("o"));
    press(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(view.selectedText().trimmed(), QStringLiteral("one"));
    press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(view.selectedText(), QStringLiteral("one two"));
    press(Qt::Key_End, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(view.selectedText(), QStringLiteral("one two\n\nthree"));
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("one two\n\nthree"));
    press(Qt::Key_Escape);
    EXPECT_EQ(view.selectedText(), QString());
}

TEST_F(MarkdownViewTest, TheCaretMovesOnFromBlockToBlock)
{
    show("ab\n\ncd");
    focus();
    for (int step = 0; step < 4; ++step)
        press(Qt::Key_Right);
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(view.selectedText(), QStringLiteral("d"));
    press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(view.selectedText(), QStringLiteral("c"));
}

TEST_F(MarkdownViewTest, ASelectionLastsWhileTheTextGrows)
{
    show("hello world");
    view.selectAll();
    view.append(QStringLiteral(" and more"));
    settle();
    EXPECT_EQ(view.selectedText(), QStringLiteral("hello world"));
}

TEST_F(MarkdownViewTest, ASelectionInTextThatGoesIsNoMore)
{
    show("hello\n\nworld");
    view.selectAll();
    show("x\n\n- y");
    EXPECT_EQ(view.selectedText(), QString());
    for (TextBox *box : texts())
        EXPECT_EQ(box->selectionEnd(), 0);
}

TEST_F(MarkdownViewTest, AClickOnALinkSaysItsResolvedTarget)
{
    view.setBaseURL(QUrl(QStringLiteral("https://example.org/docs/")));
    show("see [the page](page.html) or not");
    const QSignalSpy activated(&view, &Markdown::linkActivated);
    QTest::mouseClick(&window, Qt::LeftButton, {}, middleOf(text(0), 6, 7));
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated[0][0].toUrl(), QUrl(QStringLiteral("https://example.org/docs/page.html")));
    QTest::mouseClick(&window, Qt::LeftButton, {}, middleOf(text(0), 1, 2), 1000);
    EXPECT_EQ(activated.count(), 1);
}

TEST_F(MarkdownViewTest, ADragThatBeginsOnALinkOpensNothing)
{
    show("[a link that is long](https://x.org)");
    const QSignalSpy activated(&view, &Markdown::linkActivated);
    QTest::mousePress(&window, Qt::LeftButton, {}, middleOf(text(0), 1, 2));
    QTest::mouseMove(&window, middleOf(text(0), 15, 16));
    QTest::mouseRelease(&window, Qt::LeftButton, {}, middleOf(text(0), 15, 16));
    EXPECT_EQ(activated.count(), 0);
    EXPECT_FALSE(view.selectedText().isEmpty());
}

TEST_F(MarkdownViewTest, ThePointerOverALinkIsAHandAndTellsTheTarget)
{
    show("see [the page](https://example.org/page) or not");
    hover(middleOf(text(0), 6, 7));
    EXPECT_EQ(view.hoveredLink(), QStringLiteral("https://example.org/page"));
    EXPECT_EQ(view.cursor().shape(), Qt::PointingHandCursor);
    hover(middleOf(text(0), 1, 2));
    EXPECT_EQ(view.hoveredLink(), QString());
    EXPECT_EQ(view.cursor().shape(), Qt::IBeamCursor);
}

TEST_F(MarkdownViewTest, TheKeyboardReachesAndOpensLinks)
{
    show("[one](https://1.org) text [two](https://2.org)\n\n- [three](https://3.org)");
    const QSignalSpy activated(&view, &Markdown::linkActivated);
    focus();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        press(Qt::Key_Tab);
        press(key);
    }
    QStringList opened;
    for (const QList<QVariant> &arguments : activated)
        opened.append(arguments[0].toUrl().host());
    EXPECT_EQ(opened, QStringList({QStringLiteral("1.org"), QStringLiteral("2.org"),
                                   QStringLiteral("3.org")}));
}

TEST_F(MarkdownViewTest, ALinkTellsAssistiveTechnologyItsTarget)
{
    show("see [the *page*](https://example.org/page)");
    ASSERT_EQ(links().size(), 1);
    QAccessibleInterface *link = accessible(links()[0]);
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(link->role(), QAccessible::Link);
    EXPECT_EQ(link->text(QAccessible::Name), QStringLiteral("the page"));
    EXPECT_EQ(link->text(QAccessible::Description), QStringLiteral("https://example.org/page"));
    const QSignalSpy activated(&view, &Markdown::linkActivated);
    link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(activated.count(), 1);
}

TEST_F(MarkdownViewTest, EachBlockTellsItsRoleAndItsPlainText)
{
    show("# A *head*\n\nA **text**\n\n- item\n\n|a|\n|-|\n|b|\n\n- [x] done");
    const auto role = [&](Box &box) { return accessible(box.item())->role(); };
    const auto name = [&](Box &box) { return accessible(box.item())->text(QAccessible::Name); };
    EXPECT_EQ(role(view.boxes().at(0)), QAccessible::Heading);
    EXPECT_EQ(name(view.boxes().at(0)), QStringLiteral("A head"));
    EXPECT_EQ(role(view.boxes().at(1)), QAccessible::StaticText);
    EXPECT_EQ(name(view.boxes().at(1)), QStringLiteral("A text"));
    EXPECT_EQ(role(view.boxes().at(2)), QAccessible::List);
    auto *list = box<ListBox>(2);
    EXPECT_EQ(role(list->at(0)), QAccessible::ListItem);
    EXPECT_EQ(role(view.boxes().at(3)), QAccessible::Table);
    EXPECT_EQ(role(text(3)), QAccessible::Cell);
    EXPECT_EQ(name(text(3)), QStringLiteral("a"));
    auto *tasks = box<ListBox>(4);
    EXPECT_TRUE(accessible(tasks->at(0).item())->state().checkable);
    EXPECT_TRUE(accessible(tasks->at(0).item())->state().checked);
}

TEST_F(MarkdownViewTest, WhatGrowsTellsItsNewText)
{
    show("a");
    view.append(QStringLiteral("b"));
    settle();
    EXPECT_EQ(accessible(view.boxes().at(0).item())->text(QAccessible::Name), QStringLiteral("ab"));
}

TEST_F(MarkdownViewTest, RemotePicturesAreFetchedByNobodyButTheProvider)
{
    test::ScriptedServer server;
    QString document;
    for (const char *pattern : {"![a](%1)", "text ![a](%1)", "# ![a](%1) head", "<img src=\"%1\">",
                                "<p><img src=\"%1\"></p>", "> ![a](%1)", "- ![a](%1)",
                                "|![a](%1)|\n|-|\n|<img src='%1'>|", "~~~\n<img src=\"%1\">\n~~~",
                                "[![a](%1)](%1)", "![a](%1)\n![b](%1)"}) {
        document += QString::fromLatin1(pattern).arg(
                        server.url(QStringLiteral("/picture.png")).toString()) +
                    QStringLiteral("\n\n");
    }
    view.setText(document);
    for (int frame = 0; frame < 20; ++frame) {
        settle();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    EXPECT_EQ(server.connectionCount(), 0);

    class Asking final : public ImageProvider
    {
    public:
        QQuickItem *makeImage(const QUrl &, const QString &, QQuickItem *) override
        {
            ++asked;
            return nullptr;
        }
        int asked = 0;
    } provider;
    view.setImageProvider(&provider);
    settle();
    EXPECT_GE(provider.asked, 6);
    EXPECT_EQ(server.connectionCount(), 0);
}

} // namespace velto::markdown
