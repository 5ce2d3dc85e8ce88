#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/screenshots.sh [PART-OF-A-NAME...]
#
# `make screenshots`: every screen in its states, light and dark, small and wide and at 200 %, from
# the real program against velto-local, into build/screenshots/.

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$VELTO_SOURCE_DIR/scripts/install-packages.sh" build run test
configure_and_build release
VELTO_BUILD_DIR=$VELTO_SOURCE_DIR/build/release \
    /usr/bin/python3 -B "$VELTO_SOURCE_DIR/scripts/screenshots.py" "$@"
