#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/format.sh: lays out the project's own C++ files.

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$VELTO_SOURCE_DIR/scripts/install-packages.sh" lint
cd "$VELTO_SOURCE_DIR"
find src local tests bench fuzz -type f \( -name '*.cpp' -o -name '*.h' \) -not -path '*/data/*' \
    -print0 2>/dev/null | xargs -0r clang-format -i
