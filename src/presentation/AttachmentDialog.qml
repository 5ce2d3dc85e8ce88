// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick.Dialogs

/// The file dialog of the toolkit, for desktops that have none of their own. Made when it is needed.
FileDialog {
    id: root

    /// Where it begins.
    required property url folder

    signal chosen(url file)
    signal ended

    currentFolder: folder
    fileMode: FileDialog.OpenFile
    title: qsTr("Attach file")

    onAccepted: {
        chosen(selectedFile);
        ended();
    }
    onRejected: ended()
}
