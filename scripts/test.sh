#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/test.sh [OPTION...]
#
# `make test`: builds everything and runs the tests in a desktop of their own. Options go to
# ctest, such as -R chat.

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$VELTO_SOURCE_DIR/scripts/install-packages.sh" build run test
configure_and_build dev
"$VELTO_SOURCE_DIR/scripts/with-desktop.sh" ctest --test-dir "$VELTO_SOURCE_DIR/build/dev" \
    -j2 --output-on-failure "$@"
