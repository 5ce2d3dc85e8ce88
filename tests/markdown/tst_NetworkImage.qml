// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Markdown

/// What shows without a loader; what comes from one is in tst_networkimage.
TestCase {
    id: root

    height: 200
    name: "NetworkImage"
    visible: true
    when: windowShown
    width: 200

    Component {
        id: picture

        NetworkImage {
            alt: "Hills"
            url: "http://127.0.0.1:9/hills.png"

            failure: Rectangle {
                color: "red"
                implicitHeight: 30
                implicitWidth: 30
            }
            placeholder: Rectangle {
                color: "lime"
                implicitHeight: 20
                implicitWidth: 50
                objectName: "waiting"
            }
        }
    }

    function test_showsItsPlaceholderWhileThereIsNoPicture(): void {
        const view = createTemporaryObject(picture, root);
        compare(view.status, NetworkImage.Empty);
        tryVerify(() => view.children.length === 1);
        compare(view.children[0].objectName, "waiting");
        tryCompare(view, "implicitWidth", 50);
        tryCompare(view, "implicitHeight", 20);
        waitForRendering(view);
        compare(grabImage(root).pixel(10, 10), Qt.color("lime"));
    }
    function pictures(item: Item): var {
        return harness.accessibleTree(item).filter(told => told.role === Accessible.Graphic);
    }
    function test_tellsWhatThePictureShows(): void {
        const view = createTemporaryObject(picture, root);
        compare(pictures(view).length, 1);
        compare(pictures(view)[0].name, "Hills");
    }
    function test_isDecorationWithoutAText(): void {
        const view = createTemporaryObject(picture, root, {
            "alt": ""
        });
        compare(pictures(view).length, 0);
        view.alt = "Hills";
        compare(pictures(view).length, 1);
    }
}
