// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

import QtQuick
import Velto.Controls

/// Stands above the conversations of a bucket.
Label {
    property bool isFirst: false

    Accessible.role: Accessible.Heading
    bottomPadding: Tokens.spaceTiny
    color: Tokens.secondary
    elide: Text.ElideRight
    font.pixelSize: 11 * Tokens.textScale
    font.weight: Font.DemiBold
    leftPadding: 2 * Tokens.spaceSmall
    rightPadding: Tokens.spaceSmall
    topPadding: isFirst ? Tokens.spaceTiny : Tokens.spaceMedium
}
