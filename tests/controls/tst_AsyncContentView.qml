// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls

TestCase {
    id: root

    property int retries: 0

    height: 400
    name: "AsyncContentView"
    visible: true
    when: windowShown
    width: 400

    AsyncContentView {
        id: view

        anchors.fill: parent
        emptySymbol: "bag"
        emptyText: "Nothing here yet"
        error: ""
        isEmpty: false
        isLoading: false

        Label {
            text: "The content"
        }
    }

    function names(): var {
        return harness.accessibleTree(view).map(item => item.name);
    }
    function button(name: string): Item {
        return harness.focusableItems(view).find(item => harness.accessible(item).name === name) ?? null;
    }
    function init(): void {
        retries = 0;
        view.isLoading = false;
        view.error = "";
        view.isEmpty = false;
        view.retry = null;
    }

    function test_loadingComesFirst(): void {
        view.isLoading = true;
        view.error = "No network";
        view.isEmpty = true;
        compare(names(), ["Loading…"]);
    }
    function test_anErrorComesBeforeEmptiness(): void {
        view.error = "No network";
        view.isEmpty = true;
        verify(names().includes("Something went wrong"));
        verify(names().includes("No network"));
        verify(!names().includes("Nothing here yet"));
    }
    function test_emptinessComesBeforeTheContent(): void {
        view.isEmpty = true;
        verify(names().includes("Nothing here yet"));
        verify(!names().includes("The content"));
    }
    function test_otherwiseTheContent(): void {
        compare(names(), ["The content"]);
    }
    function test_buttonsAreThereWhenThereIsSomethingToTry_data(): var {
        return [{tag: "error", error: "No network", label: "Try again"}, {tag: "empty", error: "", label: "Refresh"}];
    }
    function test_buttonsAreThereWhenThereIsSomethingToTry(data): void {
        view.error = data.error;
        view.isEmpty = true;
        compare(button("Try again"), null);
        compare(button("Refresh"), null);
        view.retry = () => root.retries++;
        const found = button(data.label);
        verify(found !== null);
        waitForRendering(found);
        mouseClick(found);
        compare(retries, 1);
        view.forceActiveFocus();
        keyClick(Qt.Key_Return);
        compare(retries, 2);
    }
}
