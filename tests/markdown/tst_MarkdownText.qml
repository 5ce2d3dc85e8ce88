// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Markdown

TestCase {
    id: root

    height: 400
    name: "MarkdownText"
    visible: true
    when: windowShown
    width: 400

    ListModel {
        id: rows

        ListElement {
            body: "First *row*"
        }
        ListElement {
            body: "Second"
        }
    }
    Component {
        id: plain

        MarkdownText {
            width: 300
        }
    }
    Component {
        id: list

        ListView {
            height: 400
            model: rows
            width: 300

            delegate: MarkdownText {
                required property string body

                text: body
                width: ListView.view.width
            }
        }
    }
    SignalSpy {
        id: links

        signalName: "linkActivated"
    }

    function tipOf(view: Item): var {
        for (let at = 0; at < view.children.length; ++at) {
            if (view.children[at].sourceComponent !== undefined)
                return view.children[at].item;
        }
        return null;
    }
    function test_isAsTallAsItsText(): void {
        const view = createTemporaryObject(plain, root);
        compare(view.height, 0);
        view.text = "One line";
        tryVerify(() => view.height > 10);
        const one = view.height;
        view.text = "One line\n\nand another";
        tryVerify(() => view.height > 2 * one);
        view.text = "One line";
        tryCompare(view, "height", one);
    }
    function test_growsByWhatIsAppended(): void {
        const view = createTemporaryObject(plain, root, {
            "text": "- a"
        });
        tryVerify(() => view.height > 0);
        const one = view.height;
        view.append("\n- b");
        compare(view.text, "- a\n- b");
        tryVerify(() => view.height > one);
    }
    function test_rowsOfAListAreAsTallAsTheirTexts(): void {
        const view = createTemporaryObject(list, root);
        tryCompare(view, "count", 2);
        tryVerify(() => view.itemAtIndex(0) !== null && view.itemAtIndex(0).height > 10);
        const first = view.itemAtIndex(0);
        tryCompare(view.itemAtIndex(1), "y", first.height);
        rows.setProperty(0, "body", "First *row*\n\n| a |\n|---|\n| b |");
        tryVerify(() => first.height > 60);
        tryCompare(view.itemAtIndex(1), "y", first.height);
    }
    function test_aClickOnALinkIsTold(): void {
        const view = createTemporaryObject(plain, root, {
            "text": "[link](page)",
            "baseURL": "https://example.org/docs/"
        });
        links.target = view;
        links.clear();
        tryVerify(() => view.height > 0);
        mouseClick(view, 8, view.height / 2);
        tryCompare(links, "count", 1);
        compare(links.signalArguments[0][0].toString(), "https://example.org/docs/page");
    }
    function test_theTargetShowsWhereThePointerRests(): void {
        const view = createTemporaryObject(plain, root, {
            "text": "[link](https://example.org/page)"
        });
        tryVerify(() => view.height > 0);
        compare(tipOf(view), null);
        mouseMove(view, 8, view.height / 2);
        tryCompare(view, "hoveredLink", "https://example.org/page");
        tryVerify(() => tipOf(view) !== null && tipOf(view).visible);
        compare(tipOf(view).link, "https://example.org/page");
        mouseMove(view, 250, view.height / 2);
        tryVerify(() => tipOf(view) === null);
    }
    function test_isReachedByTabAndSelectsByKeyboard(): void {
        const view = createTemporaryObject(plain, root, {
            "text": "some **text**"
        });
        tryVerify(() => view.height > 0);
        view.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_A, Qt.ControlModifier);
        tryCompare(view, "selectedText", "some text");
    }
}
