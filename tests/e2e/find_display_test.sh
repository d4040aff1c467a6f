#!/usr/bin/env bash
# Which displays the start script takes for real: a name that an ended session has left behind is none.
# Run in a Wayland desktop, where both kinds answer.
# shellcheck disable=SC2030,SC2031 # each row sets the displays for itself only
set -euo pipefail
# shellcheck source=packaging/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/../../packaging/setup.sh"

failures=0

# expect DISPLAY WAYLAND_DISPLAY FOUND: what is left of the two, "none" when there is no display.
expect() {
  local found
  found=$(DISPLAY=$1 WAYLAND_DISPLAY=$2
    if find_display; then echo "${DISPLAY:-} ${WAYLAND_DISPLAY:-}"; else echo none; fi)
  [ "$found" = "$3" ] || {
    echo "DISPLAY=$1 WAYLAND_DISPLAY=$2: found \"$found\", not \"$3\""
    failures=$((failures + 1))
  }
}

x=$DISPLAY
wayland=$WAYLAND_DISPLAY
socket_nobody_serves=$(dirname "$wayland")/stale
/usr/bin/python3 -c 'import socket, sys; socket.socket(socket.AF_UNIX).bind(sys.argv[1])' \
  "$socket_nobody_serves"

expect "$x" "$wayland" "$x $wayland"
expect "$x" "" "$x "
expect "" "$wayland" " $wayland"
expect ":4711" "$wayland" " $wayland"
expect "$x" "$socket_nobody_serves" "$x "
expect ":4711" "" none
expect "" "$socket_nobody_serves" none
expect ":4711" "no-such-socket" none
expect "" "" none

XDG_RUNTIME_DIR=$(dirname "$wayland")
export XDG_RUNTIME_DIR
expect "" "$(basename "$wayland")" " $(basename "$wayland")"
exit "$failures"
