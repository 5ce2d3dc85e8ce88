// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Presentation

/// Parts of rows by themselves, as the running chat can't be brought to show them.
TestCase {
    id: root

    height: 700
    name: "Rows"
    visible: true
    when: windowShown
    width: 700

    Component {
        id: userMessage

        UserMessage {
            activeBranch: 0
            createdAt: new Date()
            isReadOnly: false
            isSettled: true
            isStreaming: false
            text: "hello"
            width: root.width
        }
    }
    Component {
        id: editor

        UserMessageEditor {
            width: root.width
        }
    }
    Component {
        id: navigator

        BranchNavigator {}
    }
    Component {
        id: code

        ToolCodeBlock {
            width: root.width
        }
    }
    SignalSpy {
        id: spy
    }

    function test_oneVersionShowsNoNavigator_data(): var {
        return [
            {tag: "never edited", count: 0, shows: false},
            {tag: "one", count: 1, shows: false},
            {tag: "two", count: 2, shows: true}
        ];
    }
    function test_oneVersionShowsNoNavigator(data: var): void {
        const message = createTemporaryObject(userMessage, root, {branchCount: data.count});
        const shown = harness.accessibleTree(message).some(item => item.name === "Version 1 of 2");
        compare(shown, data.shows);
    }
    function test_theNavigatorIsDimAndDeafWhenDisabled(): void {
        const bar = createTemporaryObject(navigator, root, {current: 1, total: 3, disabled: true});
        compare(bar.opacity, 0.4);
        spy.clear();
        spy.target = bar;
        spy.signalName = "next";
        waitForRendering(bar);
        mouseClick(bar, bar.width - 5, bar.height / 2);
        compare(spy.count, 0);
        bar.disabled = false;
        compare(bar.opacity, 1);
        mouseClick(bar, bar.width - 5, bar.height / 2);
        compare(spy.count, 1);
    }
    function test_theEditorGivesTheTextUntrimmed(): void {
        const box = createTemporaryObject(editor, root, {text: "\n  as typed \n"});
        spy.clear();
        spy.target = box;
        spy.signalName = "accepted";
        keyClick(Qt.Key_Return, Qt.ControlModifier);
        compare(spy.count, 1);
        compare(spy.signalArguments[0][0], "\n  as typed \n");
    }
    function test_theEditorGrowsToTenLines(): void {
        const box = createTemporaryObject(editor, root, {text: "1"});
        const field = harness.focusableItems(box).find(item => item instanceof TextEdit);
        const heights = [];
        for (const lines of [1, 2, 10, 11, 40]) {
            field.text = Array(lines).fill("x").join("\n");
            waitForRendering(box);
            heights.push(box.height);
        }
        verify(heights[1] > heights[0]);
        verify(heights[2] > heights[1]);
        compare(heights[3], heights[2]);
        compare(heights[4], heights[2]);
    }
    function test_codeOfAnErrorIsNeverColoured(): void {
        const block = createTemporaryObject(code, root, {text: "def f(): return 1", language: "python", isError: true});
        waitForRendering(block);
        const image = grabImage(block);
        const isRed = (x, y) => image.red(x, y) >= image.green(x, y) && Math.abs(image.green(x, y) - image.blue(x, y)) < 40;
        for (let x = 0; x < 200; x += 1) {
            for (let y = 0; y < block.height; y += 1)
                verify(isRed(x, y), `${x}, ${y}: ${image.pixel(x, y)}`);
        }
    }
}
