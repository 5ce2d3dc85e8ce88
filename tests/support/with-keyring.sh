#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
#
# with-keyring.sh unlocked|no-service|no-bus COMMAND...
#
# Runs a test beside a session bus, home and keyring of its own:
#
#   unlocked    gnome-keyring with an unlocked default keyring, its password "velto"
#   no-service  a bus on which no Secret Service answers
#   no-bus      not even a bus
#
# The bus starts nothing by itself. So nobody shows a prompt, unless the test plays that part.

set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"

[[ $# -gt 1 ]] || die "usage: with-keyring.sh unlocked|no-service|no-bus COMMAND..."
export VELTO_TEST_KEYRING=$1
shift

FOLDER=$(mktemp -d "${TMPDIR:-/tmp}/velto-keyring.XXXXXX")
cleanup() {
    stop_helpers
    rm -rf "$FOLDER"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

unset "${!XDG_@}" DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS GNOME_KEYRING_CONTROL SECRET_BACKEND
export HOME=$FOLDER/home XDG_RUNTIME_DIR=$FOLDER/runtime
mkdir -m 700 "$HOME" "$XDG_RUNTIME_DIR"

start_plain_bus() {
    cat >"$FOLDER/bus.conf" <<EOF
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=$XDG_RUNTIME_DIR/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
EOF
    export DBUS_SESSION_BUS_ADDRESS="unix:path=$XDG_RUNTIME_DIR/bus"
    start_helper dbus-daemon --config-file="$FOLDER/bus.conf" --nofork --nopidfile --nosyslog \
        2>"$FOLDER/bus.log"
    wait_for 10 bus_answers || die "the session bus did not come up"
}

case $VELTO_TEST_KEYRING in
    unlocked)
        start_plain_bus
        start_keyring "$HOME/.local/share" "$XDG_RUNTIME_DIR/keyring" "velto"
        ;;
    no-service) start_plain_bus ;;
    no-bus) ;;
    *) die "no such keyring: $VELTO_TEST_KEYRING" ;;
esac

# A helper too, so that a test that hangs ends with this script.
start_helper "$@"
wait "${STARTED_PIDS[-1]}"
