// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls
import Velto.Presentation

/// What attaching a file may show: a dialog where the desktop has none, and what went wrong.
Item {
    id: root

    required property Attachments attachments

    function showOwnDialog(): void {
        dialog.setSource("AttachmentDialog.qml", {folder: attachments.homeFolder()});
        if (dialog.status === Loader.Error)
            attachments.fail(qsTr("The file dialog could not be opened."));
    }

    Component.onDestruction: {
        if (dialog.item !== null)
            (dialog.item as AttachmentDialog).close();
    }

    Connections {
        function onOwnDialogNeeded(): void {
            root.showOwnDialog();
        }

        target: root.attachments
    }
    Loader {
        id: dialog

        onLoaded: (item as AttachmentDialog).open()
    }
    Connections {
        function onChosen(file: url): void {
            root.attachments.attach([file]);
        }
        function onEnded(): void {
            dialog.source = "";
        }

        ignoreUnknownSignals: true
        target: dialog.item
    }
    Alert {
        actions: [
            {
                label: qsTr("OK"),
                role: "cancel"
            }
        ]
        message: root.attachments.error
        shown: root.attachments.error !== ""
        title: qsTr("Couldn't attach file")

        onDismissed: root.attachments.dismissError()
    }
}
