#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/gallery.sh [ARGUMENT...]
#
# `make gallery`: builds the gallery and shows it; see src/gallery/README.md for the arguments.

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$VELTO_SOURCE_DIR/scripts/install-packages.sh" build run
configure_and_build release gallery
exec "$VELTO_SOURCE_DIR/build/release/src/gallery/gallery" "$@"
