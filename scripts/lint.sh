#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/lint.sh
#
# clang-format, shellcheck, qmllint and clang-tidy on the project's own files. Every tool runs,
# whatever the others found; fails when one of them found something.

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

cd "$VELTO_SOURCE_DIR"
FAILED=()

own_files() {
    find .ci src local tests bench fuzz scripts -type f -not -path '*/data/*' "$@" -print0 2>/dev/null
}

check() {
    local name=$1
    shift
    say "$name"
    "$@" || FAILED+=("$name")
}

layout() { own_files \( -name '*.cpp' -o -name '*.h' \) | xargs -0r clang-format --dry-run -Werror; }

shell_scripts() {
    own_files \( -name '*.sh' -o -path '.ci/run' \) | xargs -0r shellcheck -x
}

# Tests of QML reach their harness as a context object, which qmllint knows nothing of.
qml() {
    find src -name '*.qml' -print0 | xargs -0r -n 1 /usr/lib/qt6/bin/qmllint -I build/dev/qml
}

"$VELTO_SOURCE_DIR/scripts/install-packages.sh" build run test lint
configure_and_build dev
check clang-format layout
check shellcheck shell_scripts
check qmllint qml
check clang-tidy /usr/bin/python3 scripts/tidy.py build/dev
[[ ${#FAILED[@]} == 0 ]] || die "lint: ${FAILED[*]} found something"
say "lint: nothing found"
