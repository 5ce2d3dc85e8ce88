// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// A question or a message that has to be answered before anything else in the window. It costs
/// nothing while it isn't shown. Each action is an object:
///   label    what its button says
///   activate optional, called when it was chosen
///   role     optional: "destructive" is coloured so, "cancel" is what Escape chooses
/// `dismissed` follows every answer; whoever shows it then sets `shown` to false.
Item {
    id: root

    required property bool shown
    required property string title
    required property string message
    required property var actions
    property var popup: null
    property Item previous: null

    signal dismissed

    function follow(): void {
        if (shown === (popup !== null))
            return;
        if (!shown)
            return popup.close();
        previous = Window.activeFocusItem;
        const component = Qt.createComponent("AlertPopup.qml");
        popup = component.createObject(root, {actions, message, title});
        popup.answered.connect(answer);
        popup.closed.connect(forget);
        popup.open();
    }
    function answer(action: var): void {
        if (action !== undefined && action.activate !== undefined)
            action.activate();
        dismissed();
    }
    function forget(): void {
        popup.destroy();
        popup = null;
        if (previous !== null)
            previous.forceActiveFocus(Qt.PopupFocusReason);
    }

    Component.onCompleted: follow()
    onShownChanged: follow()
}
