#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# scripts/run.sh [OPTION...]
#
# `make run`: builds velto and velto-local and runs them together. Options go to velto.
#
#   VELTO_RUN_BUILD  folder of a finished build to run, instead of installing and building

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

DATA=${XDG_DATA_HOME:-$HOME/.local/share}/velto-local
STATE=${XDG_STATE_HOME:-$HOME/.local/state}/velto-local
BIN=${VELTO_RUN_BUILD:-$VELTO_SOURCE_DIR/build/release}
FOLDER=

cleanup() {
    trap '' INT TERM HUP
    trap - EXIT
    stop_helpers
    [[ -z $FOLDER ]] || rm -rf "$FOLDER"
}
trap cleanup EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

# Without a bus, xdg-mime would leave one running.
web_handler() {
    DBUS_SESSION_BUS_ADDRESS=${DBUS_SESSION_BUS_ADDRESS:-disabled:} \
        xdg-mime query default x-scheme-handler/http 2>/dev/null
}

has_browser() {
    [[ -n ${BROWSER:-} || -n $(web_handler) ]] && return
    local name
    for name in x-www-browser firefox firefox-esr chromium google-chrome epiphany-browser konqueror; do
        ! have "$name" || return 0
    done
    return 1
}

get_packages() {
    "$VELTO_SOURCE_DIR/scripts/install-packages.sh" build run
    if ! has_browser; then
        say "signing in needs a web browser, and this machine has none"
        "$VELTO_SOURCE_DIR/scripts/install-packages.sh" browser
    fi
}

# A service that isn't there yet but starts when asked counts if the user keeps secrets in it.
has_secret_service() {
    secret_service_runs && return
    bus_call ListActivatableNames 2>/dev/null | grep -qw org.freedesktop.secrets &&
        compgen -G "${XDG_DATA_HOME:-$HOME/.local/share}/keyrings/*.keyring" >/dev/null
}

# The keyring of these runs outlives them, so that the sign-in does. Its password lies in a file
# that only the user can read: good enough for a demonstration account and not for more.
keyring_password() {
    local file=$STATE/keyring-password
    if [[ ! -s $file ]]; then
        mkdir -p "$STATE"
        (umask 077 && head -c 24 /dev/urandom | base64 >"$file")
    fi
    cat "$file"
}

bring_up_session() {
    local why=$1
    say "$why: bringing one up for this run"
    say "its keyring is $DATA/keyring, opened with the password in $STATE/keyring-password;"
    say "set up a keyring of your desktop's own before you sign in with an account that matters"
    start_bus "$FOLDER"
    start_keyring "$DATA/keyring" "$FOLDER/keyring" "$(keyring_password)"
}

# The browser outlives the run, so it must not depend on the bus of the run. As root, Chromium
# refuses to start unless told to do without its sandbox.
wrap_browser() {
    local real user_bus=$1
    real=$(command -v xdg-open)
    mkdir "$FOLDER/bin"
    {
        echo '#!/bin/sh'
        if [[ -n $user_bus ]]; then
            printf 'export DBUS_SESSION_BUS_ADDRESS=%q\n' "$user_bus"
        else
            echo 'unset DBUS_SESSION_BUS_ADDRESS'
        fi
        if [[ $(id -u) == 0 ]] && default_browser_is_chromium; then
            echo 'exec chromium --no-sandbox "$@"'
        else
            printf 'exec %q "$@"\n' "$real"
        fi
    } >"$FOLDER/bin/xdg-open"
    chmod 700 "$FOLDER/bin/xdg-open"
    export PATH="$FOLDER/bin:$PATH"
}

default_browser_is_chromium() {
    [[ -z ${BROWSER:-} ]] && have chromium || return 1
    local entry
    entry=$(web_handler)
    [[ $entry == chromium.desktop ]] ||
        [[ -z $entry && $(readlink -f "$(command -v x-www-browser)") == */chromium ]]
}

prepare_session() {
    local user_bus=${DBUS_SESSION_BUS_ADDRESS:-}
    if [[ ! -d ${XDG_RUNTIME_DIR:-} || ! -w ${XDG_RUNTIME_DIR:-} ]]; then
        mkdir -m 700 "$FOLDER/runtime"
        export XDG_RUNTIME_DIR=$FOLDER/runtime
    elif [[ -z $user_bus && -S $XDG_RUNTIME_DIR/bus ]]; then
        user_bus=unix:path=$XDG_RUNTIME_DIR/bus
        export DBUS_SESSION_BUS_ADDRESS=$user_bus
    fi
    if [[ -z $user_bus ]] || ! bus_answers; then
        bring_up_session "no session bus here"
        wrap_browser ""
    elif ! has_secret_service; then
        bring_up_session "no Secret Service on the session bus"
        wrap_browser "$user_bus"
    elif [[ $(id -u) == 0 ]]; then
        wrap_browser "$user_bus"
    fi
}

velto_runs() { [[ $(bus_call NameHasOwner string:ltd.orbax.velto 2>/dev/null) == *true* ]]; }

service_answers_or_ended() { [[ -s $FOLDER/port ]] || ended "$SERVICE_PID"; }

start_service() {
    mkdir -p "$DATA"
    chmod 700 "$DATA"
    start_helper "$BIN/local/velto-local" --port 0 --data "$DATA" --port-file "$FOLDER/port"
    SERVICE_PID=${STARTED_PIDS[-1]}
    wait_for 20 service_answers_or_ended || true
    [[ -s $FOLDER/port ]] || die "velto-local did not come up"
    VELTO_API_BASE_URL=http://127.0.0.1:$(<"$FOLDER/port")
    export VELTO_API_BASE_URL
    say "velto-local answers at $VELTO_API_BASE_URL, its data is in $DATA"
}

[[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]] ||
    die "no display: neither DISPLAY nor WAYLAND_DISPLAY is set, and velto is a window"
if [[ -z ${VELTO_RUN_BUILD:-} ]]; then
    get_packages
    configure_and_build release velto velto-local
fi
FOLDER=$(mktemp -d "${TMPDIR:-/tmp}/velto-run.XXXXXX")
prepare_session
if velto_runs; then
    say "velto runs in this session already: bringing it forward"
    "$BIN/bin/velto" "$@"
    exit
fi
start_service
start_helper "$BIN/bin/velto" "$@"
wait "${STARTED_PIDS[-1]}"
