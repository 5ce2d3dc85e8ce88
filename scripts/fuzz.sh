#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/fuzz.sh [TARGET...]
#
# `make fuzz`: every fuzz target, or those named, for VELTO_FUZZ_SECONDS (60) each. A target
# fuzz_<subject> starts from fuzz/corpus/<subject>; what it finds stays in build/fuzz/found.

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$VELTO_SOURCE_DIR/scripts/install-packages.sh" build lint
configure_and_build fuzz fuzz_targets
cd "$VELTO_SOURCE_DIR/build/fuzz"
if [[ $# == 0 ]]; then
    mapfile -t TARGETS < <(find fuzz -maxdepth 1 -type f -executable -name 'fuzz_*' -printf '%f\n' | sort)
    set -- "${TARGETS[@]}"
fi
[[ $# -gt 0 ]] || die "there is no fuzz target in build/fuzz/fuzz"

FAILED=()
for target in "$@"; do
    subject=${target#fuzz_}
    mkdir -p "corpus/$subject" found
    say "$target"
    "fuzz/$target" -max_total_time="${VELTO_FUZZ_SECONDS:-60}" -timeout=10 -print_final_stats=1 \
        -artifact_prefix="found/$subject-" \
        "corpus/$subject" "$VELTO_SOURCE_DIR/fuzz/corpus/$subject" || FAILED+=("$target")
done
[[ ${#FAILED[@]} == 0 ]] || die "found something: ${FAILED[*]}; see build/fuzz/found"
