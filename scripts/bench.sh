#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/bench.sh [NAME...]
#
# `make bench`: every benchmark, or those named (bench_stream, startup.py), and the table of
# bench/run.py. Writes build/bench.json.

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$VELTO_SOURCE_DIR/scripts/install-packages.sh" build run test bench
configure_and_build bench
export VELTO_BENCH_BUILD=$VELTO_SOURCE_DIR/build/bench
mapfile -t PROGRAMS < <(
    find "$VELTO_BENCH_BUILD/bench" -maxdepth 1 -type f -executable -name 'bench_*' | sort
    find "$VELTO_SOURCE_DIR/bench" -maxdepth 1 -type f -executable \
        \( -name '*.py' -o -name '*.sh' \) -not -name run.py | sort
)
if [[ $# -gt 0 ]]; then
    CHOSEN=()
    for program in "${PROGRAMS[@]}"; do
        [[ " $* " != *" ${program##*/} "* ]] || CHOSEN+=("$program")
    done
    PROGRAMS=("${CHOSEN[@]}")
fi
[[ ${#PROGRAMS[@]} -gt 0 ]] || die "there is no such benchmark"
# A screen reader is not part of what is measured.
"$VELTO_SOURCE_DIR/scripts/with-desktop.sh" env -u QT_LINUX_ACCESSIBILITY_ALWAYS_ON \
    /usr/bin/python3 "$VELTO_SOURCE_DIR/bench/run.py" "$VELTO_SOURCE_DIR/build/bench.json" \
    "${PROGRAMS[@]}"
