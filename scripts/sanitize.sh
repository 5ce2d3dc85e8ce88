#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/sanitize.sh [OPTION...]
#
# The logic tests under AddressSanitizer and UndefinedBehaviorSanitizer. Options go to ctest.

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$VELTO_SOURCE_DIR/scripts/install-packages.sh" build run test
configure_and_build asan
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_stack_use_after_return=1:strict_string_checks=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}
"$VELTO_SOURCE_DIR/scripts/with-desktop.sh" ctest --test-dir "$VELTO_SOURCE_DIR/build/asan" \
    -j2 --output-on-failure "$@"
