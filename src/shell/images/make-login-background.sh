#!/bin/sh
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# Draws login-background.jpg: a dusk over soft ridges. Needs ImageMagick.

set -eu
cd "$(dirname "$0")"

convert -size 1x7 xc: -sparse-color Voronoi \
    '0,0 #1b2350 0,1 #343a78 0,2 #6a5494 0,3 #b5759c 0,4 #ea9f92 0,5 #f6c79f 0,6 #f6d3ab' \
    -filter Cubic -resize 1600x1200! \
    \( -size 1600x1200 xc:none -fill '#ffe2b8aa' -draw 'circle 1010,640 1010,560' -blur 0x90 \) -composite \
    \( -size 1600x1200 xc:none -fill '#6d4a86cc' -draw "path 'M 0,760 C 260,660 420,700 640,740 S 1120,640 1320,690 1520,740 1600,700 L 1600,1200 0,1200 Z'" -blur 0x5 \) -composite \
    \( -size 1600x1200 xc:none -fill '#4b3a78dd' -draw "path 'M 0,850 C 220,820 380,900 620,840 S 980,780 1240,850 1480,830 1600,870 L 1600,1200 0,1200 Z'" -blur 0x3 \) -composite \
    \( -size 1600x1200 xc:none -fill '#2c2a5cee' -draw "path 'M 0,980 C 300,900 520,1010 820,960 S 1320,900 1600,990 L 1600,1200 0,1200 Z'" -blur 0x2 \) -composite \
    \( -size 1600x1200 xc:none -fill '#171a3d' -draw "path 'M 0,1090 C 340,1040 700,1110 1000,1070 S 1440,1060 1600,1100 L 1600,1200 0,1200 Z'" -blur 0x1 \) -composite \
    -attenuate 0.06 -seed 7 +noise Gaussian -strip -quality 82 login-background.jpg
