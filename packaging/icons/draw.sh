#!/bin/sh
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# Draws the icons of the window and of the tray from the drawings beside this, in the sizes in which
# they are looked at: the client reads no drawings. Needs rsvg-convert (Debian's librsvg2-bin).

set -eu
cd "$(dirname "$0")"

for size in 16 24 32 48 64 128 256; do
    rsvg-convert -w $size -h $size ltd.orbax.velto.svg -o $size.png
done
# The colour is one that shows on a light panel and on a dark one.
for size in 22 24 32 48; do
    sed 's/#2e3436/#8a79d6/' ltd.orbax.velto-symbolic.svg |
        rsvg-convert -w $size -h $size -o tray-$size.png
done
