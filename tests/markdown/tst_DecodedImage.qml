// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Markdown

TestCase {
    id: root

    property var pixels: null

    height: 200
    name: "DecodedImage"
    visible: true
    when: windowShown
    width: 200

    Rectangle {
        id: source

        border.color: "blue"
        border.width: 10
        color: "red"
        height: 40
        width: 40
    }
    Component {
        id: picture

        DecodedImage {
            height: 80
            width: 80
            x: 100
        }
    }

    function initTestCase(): void {
        verify(source.grabToImage(result => root.pixels = result.image));
        tryVerify(() => root.pixels !== null);
    }
    function test_drawsThePixelsOverTheWholeItem(): void {
        const view = createTemporaryObject(picture, root, {
            "image": root.pixels
        });
        waitForRendering(view);
        const seen = grabImage(view);
        compare(seen.pixel(2, 2), Qt.color("blue"));
        compare(seen.pixel(77, 77), Qt.color("blue"));
        compare(seen.pixel(40, 40), Qt.color("red"));
    }
    function test_drawsNothingWithoutAnImage(): void {
        const view = createTemporaryObject(picture, root);
        waitForRendering(root);
        compare(grabImage(view).pixel(40, 40), Qt.color("white"));
    }
    function test_anotherImageTakesItsPlace(): void {
        const view = createTemporaryObject(picture, root, {
            "image": root.pixels
        });
        let other = null;
        source.color = "lime";
        verify(source.grabToImage(result => other = result.image));
        tryVerify(() => other !== null);
        view.image = other;
        waitForRendering(view);
        compare(grabImage(view).pixel(40, 40), Qt.color("lime"));
        source.color = "red";
    }
}
