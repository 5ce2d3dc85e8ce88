# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# What the scripts share. Source it; it runs nothing by itself.

VELTO_SOURCE_DIR=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
readonly VELTO_SOURCE_DIR

say() { printf 'velto: %s\n' "$*" >&2; }

die() {
    say "$*"
    exit 1
}

have() { command -v "$1" >/dev/null 2>&1; }

# wait_for <seconds> <command...>: until the command succeeds. Fails when the time is over.
wait_for() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < end)) || return 1
        sleep 0.05
    done
}

# configure_and_build <preset> [target...]
configure_and_build() {
    local preset=$1
    shift
    export CMAKE_EXPORT_COMPILE_COMMANDS=ON
    if have ccache && [[ -z ${CMAKE_CXX_COMPILER_LAUNCHER:-} ]]; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
        export CCACHE_SLOPPINESS=pch_defines,time_macros # else it keeps nothing made with them
    fi
    local options=(-Wno-dev)
    # CI has thirty minutes. Nobody debugs what it builds, so that it needs no debug information; a
    # quicker linker makes the many tests; and what takes longest to compile, the local service,
    # goes through the sanitizers when somebody runs them by hand. The compiler spends a sixth of its
    # time on collecting garbage, which half a gigabyte for each of its runs spares it.
    if [[ -n ${CI:-} ]]; then
        export CXXFLAGS="-pipe --param=ggc-min-heapsize=1000000"
        case $preset in
            dev) options+=(-DCMAKE_CXX_FLAGS_DEBUG=-g0 -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=gold) ;;
            asan) options+=(-DVELTO_BUILD_LOCAL=OFF) ;;
        esac
    fi
    (
        cd "$VELTO_SOURCE_DIR" || exit
        cmake --preset "$preset" "${options[@]}"
        cmake --build --preset "$preset" ${1:+--target "$@"}
    )
}

# Helper programs are children that end with this shell, even when it is killed outright.
# SIGINT gets its default back, which background commands of a script lose.
STARTED_PIDS=()
start_helper() {
    setpriv --pdeathsig TERM env --default-signal=INT "$@" <&0 &
    STARTED_PIDS+=("$!")
}

running() { kill -0 "$1" 2>/dev/null; }

ended() { ! running "$1"; }

# stop_helpers: the last one started goes first; whoever doesn't leave within 10 s is killed.
stop_helpers() {
    local index pid
    for ((index = ${#STARTED_PIDS[@]} - 1; index >= 0; index--)); do
        pid=${STARTED_PIDS[index]}
        kill -TERM "$pid" 2>/dev/null || true
        wait_for 10 ended "$pid" || kill -KILL "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    STARTED_PIDS=()
}

bus_call() {
    dbus-send --session --print-reply=literal --reply-timeout=5000 \
        --dest=org.freedesktop.DBus /org/freedesktop/DBus "org.freedesktop.DBus.$1" "${@:2}"
}

bus_answers() { bus_call GetId >/dev/null 2>&1; }

secret_service_runs() {
    [[ $(bus_call NameHasOwner string:org.freedesktop.secrets 2>/dev/null) == *true* ]]
}

# start_bus <folder>: a session bus for this shell and its children, its socket in the folder.
start_bus() {
    export DBUS_SESSION_BUS_ADDRESS="unix:path=$1/bus"
    start_helper dbus-daemon --session --nofork --nopidfile --nosyslog \
        --address="$DBUS_SESSION_BUS_ADDRESS" 2>"$1/bus.log"
    wait_for 10 bus_answers || die "the session bus did not come up"
}

# start_keyring <folder for the keyring files> <control folder> <password>
start_keyring() {
    mkdir -p "$1" "$2"
    chmod 700 "$1" "$2"
    start_helper env XDG_DATA_HOME="$1" gnome-keyring-daemon --unlock --foreground \
        --components=secrets --control-directory="$2" < <(printf '%s' "$3") >"$2/log" 2>&1
    wait_for 10 secret_service_runs || die "gnome-keyring-daemon did not come up"
}
