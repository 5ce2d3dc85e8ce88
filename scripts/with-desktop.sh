#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/with-desktop.sh COMMAND...
#
# Runs a command in a desktop of its own: X server with a window manager, session bus with the
# accessibility bus behind it, unlocked keyring, empty home. Ends with the command's status and
# leaves nothing behind.
#
#   VELTO_DESKTOP_SCREEN  size and depth of the screen (1920x1200x24)

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

[[ $# -gt 0 ]] || die "usage: scripts/with-desktop.sh COMMAND..."

FOLDER=$(mktemp -d "${TMPDIR:-/tmp}/velto-desktop.XXXXXX")
# Found in the environment of whatever the command left running, such as a browser.
export VELTO_DESKTOP=$FOLDER

left_behind() {
    local file pid
    for file in /proc/[0-9]*/environ; do
        pid=${file//[!0-9]/}
        if [[ $pid != "$$" ]] && grep -qzxF "VELTO_DESKTOP=$FOLDER" "$file" 2>/dev/null; then
            echo "$pid"
        fi
    done
}

none_left_behind() { [[ -z $(left_behind) ]]; }

end_processes() {
    left_behind | xargs -r kill "-$1" 2>/dev/null || true
}

cleanup() {
    trap '' INT TERM HUP
    trap - EXIT
    end_processes TERM
    stop_helpers
    if ! wait_for 5 none_left_behind; then
        end_processes KILL
        wait_for 5 none_left_behind || true
    fi
    rm -rf "$FOLDER"
}
trap cleanup EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

own_home() {
    local name
    for name in "${!XDG_@}" "${!QT_@}" "${!QML_@}" "${!GTK_@}" DESKTOP_SESSION GNOME_KEYRING_CONTROL \
        WAYLAND_DISPLAY XAUTHORITY BROWSER http_proxy https_proxy all_proxy HTTP_PROXY HTTPS_PROXY \
        ALL_PROXY VELTO_API_BASE_URL LC_ALL; do
        unset "$name"
    done
    export HOME=$FOLDER/home XDG_RUNTIME_DIR=$FOLDER/runtime LANG=C.UTF-8
    mkdir -m 700 "$HOME" "$XDG_RUNTIME_DIR"
}

has_display_number() { [[ -s $FOLDER/display ]]; }

window_manager_runs() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }

start_screen() {
    # Only root may have the X server make it.
    [[ -d /tmp/.X11-unix ]] || mkdir -m 1777 /tmp/.X11-unix
    start_helper Xvfb -displayfd 3 -screen 0 "${VELTO_DESKTOP_SCREEN:-1920x1200x24}" \
        -nolisten tcp -noreset 3>"$FOLDER/display" 2>"$FOLDER/xvfb.log"
    if ! wait_for 20 has_display_number; then
        cat "$FOLDER/xvfb.log" >&2
        die "the X server did not come up"
    fi
    DISPLAY=:$(<"$FOLDER/display")
    export DISPLAY
    start_helper openbox --sm-disable >"$FOLDER/openbox.log" 2>&1
    wait_for 20 window_manager_runs || die "the window manager did not come up"
}

own_home
start_screen
start_bus "$XDG_RUNTIME_DIR"
start_keyring "$HOME/.local/share" "$XDG_RUNTIME_DIR/keyring" "velto"
# Qt builds its accessibility tree only for a screen reader, unless told.
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1

env --default-signal=INT "$@" <&0 &
wait "$!"
