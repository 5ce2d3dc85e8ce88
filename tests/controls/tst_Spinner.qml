// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import QtTest
import Velto.Controls

TestCase {
    id: testCase

    height: 60
    name: "Spinner"
    visible: true
    when: windowShown
    width: 60

    Spinner {
        id: spinner

        size: 28
    }

    function hasChangedSince(picture: var): bool {
        return !grabImage(spinner).equals(picture);
    }
    /// How light the spoke at noon is, from 0 to 255.
    function noon(): int {
        return grabImage(spinner).green(14, 3);
    }

    function cleanup(): void {
        spinner.visible = true;
        spinner.size = 28;
    }
    function test_takesTheRoomOfItsSize(): void {
        compare(spinner.implicitWidth, 28);
        spinner.size = 16;
        compare(spinner.implicitHeight, 16);
        compare(spinner.width, 16);
    }
    function test_turnsWhileItShows(): void {
        const before = grabImage(spinner);
        tryVerify(() => hasChangedSince(before));
    }
    function test_aSpokeFadesAndComesBack(): void {
        const first = noon();
        tryVerify(() => Math.abs(noon() - first) > 60);
    }
    function test_saysWhatItIs(): void {
        compare(spinner.Accessible.name, "Loading…");
        compare(spinner.Accessible.role, Accessible.Animation);
    }
}
