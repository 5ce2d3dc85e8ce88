#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/install-packages.sh SECTION...
#
# Installs what these sections of packages.txt list and the machine lacks; through sudo when not
# root. VELTO_SKIP_PACKAGES=1 leaves the machine as it is.

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

# Lines "name<TAB>reason" of the sections named.
listed() {
    awk -v wanted=" $* " '
        /^\[/ { section = substr($1, 2, length($1) - 2); next }
        /^[a-z0-9]/ && index(wanted, " " section " ") {
            reason = $0
            sub(/^[^#]*#[ ]*/, "", reason)
            print $1 "\t" reason
        }' "$VELTO_SOURCE_DIR/packages.txt"
}

missing() {
    local installed
    installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' | awk '$2 == "installed" {print $1}')
    listed "$@" | awk -F'\t' 'NR == FNR { have[$1]; next } !($1 in have) && !seen[$1]++' \
        <(echo "$installed") -
}

as_root() {
    if [[ $(id -u) == 0 ]]; then
        "$@"
    else
        sudo "$@"
    fi
}

get_root() {
    [[ $(id -u) != 0 ]] || return 0
    local by_hand="as root: apt-get install --no-install-recommends $*"
    have sudo || die "sudo is not installed, so these packages must be installed $by_hand"
    sudo -v || die "sudo was refused, so these packages must be installed $by_hand"
}

[[ $# -gt 0 ]] || die "usage: scripts/install-packages.sh SECTION..."
[[ -z ${VELTO_SKIP_PACKAGES:-} ]] || exit 0
have apt-get || die "this machine has no apt-get: install the counterparts of packages.txt ($*)" \
    "by hand, then set VELTO_SKIP_PACKAGES=1"

LINES_MISSING=$(missing "$@")
[[ -n $LINES_MISSING ]] || exit 0
mapfile -t NAMES < <(cut -f1 <<<"$LINES_MISSING")

say "this machine lacks ${#NAMES[@]} packages, which apt-get will install:"
awk -F'\t' '{printf "    %-32s %s\n", $1, $2}' <<<"$LINES_MISSING" >&2
get_root "${NAMES[@]}"
APT=(env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
as_root "${APT[@]}" update
as_root "${APT[@]}" install -y --no-install-recommends "${NAMES[@]}"
