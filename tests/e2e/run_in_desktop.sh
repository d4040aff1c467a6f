#!/usr/bin/env bash
# Runs a command in a desktop of its own: an X server without a screen, a window manager, a message bus
# and the accessibility bus. Everything ends with the command. TELMARION_SCREEN is the screen's size.
#
# With --wayland before the command the desktop is Weston, named by WAYLAND_DISPLAY. The X server is
# then only its screen, keyboard and mouse: Weston's own headless output has no seat, so nobody could
# type there and no window would ever be active.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

# wait_until COMMAND…: up to half a minute, as a busy machine may need.
wait_until() {
  for _ in $(seq 300); do
    if "$@" >/dev/null 2>&1; then return; fi
    sleep 0.1
  done
  echo "run_in_desktop.sh: waited in vain for $*" >&2
  exit 1
}

start_openbox() {
  wait_until xdotool getdisplaygeometry # before the X server answers, a window manager would give up
  openbox >/dev/null 2>&1 &
  wait_until xdotool get_num_desktops # a window manager that is there answers for the desktops
}

# Weston learns where the mouse is when it enters its window, not before: it comes from the strip that
# the window leaves free on the right.
weston_takes_input() {
  [ -S "$WAYLAND_DISPLAY" ] && xdotool search --class weston windowfocus &&
    xdotool mousemove 1280 0 sleep 0.1 mousemove 640 512
}

# Weston outlives its X server, in a busy loop: it is told to end with this script.
start_weston() {
  trap 'kill "$weston"; wait "$weston" || true; rm -rf "$folder"' EXIT
  export WAYLAND_DISPLAY=$folder/desktop
  XDG_RUNTIME_DIR=$folder setpriv --pdeathsig TERM weston --backend=x11-backend.so --use-pixman \
    --width=1280 --height=1024 --config="$here/weston.ini" --socket=desktop --log="$folder/log" &
  weston=$!
  wait_until weston_takes_input
}

desktop=openbox
if [ "${1:-}" = --wayland ]; then
  desktop=weston
  shift
fi
if [ "${1:-}" = --inside ]; then
  desktop=$2
  shift 2
  folder=$(mktemp -d)
  trap 'rm -rf "$folder"' EXIT
  export XDG_CACHE_HOME=$folder # what the desktop's own programs remember
  /usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
  "start_$desktop"
  "$@"
else
  # Without -noreset the server starts afresh whenever its last client leaves, and the window manager may
  # knock just then.
  exec xvfb-run --auto-servernum --server-args="-screen 0 ${TELMARION_SCREEN:-1281x1024}x24 -noreset" \
    dbus-run-session -- "$0" --inside "$desktop" "$@"
fi
