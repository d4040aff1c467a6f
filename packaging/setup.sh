# Shared by the scripts at the top: installing what is missing, building, and finding a display. Sourced,
# not run.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

fail() {
  printf '%s: %s\n' "$(basename "$0")" "$1" >&2
  exit 1
}

# Prints the packages of the list that this machine lacks.
missing_packages() {
  local package
  sed -e 's/#.*//' "$root/packaging/debian-packages.txt" | tr -s '[:space:]' '\n' | sed '/^$/d' |
    while read -r package; do
      [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
        printf '%s\n' "$package"
    done
}

# Installs what is missing; silent and without apt when nothing is.
install_packages() {
  command -v dpkg-query >/dev/null ||
    fail "this set-up is for Debian; elsewhere install the packages of packaging/debian-packages.txt by hand"
  local missing as_root=()
  missing=$(missing_packages)
  [ -n "$missing" ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null ||
      fail "these packages are missing and only root can install them: ${missing//$'\n'/ }"
    as_root=(sudo)
  fi
  printf 'Installing: %s\n' "${missing//$'\n'/ }"
  "${as_root[@]}" apt-get update -q ||
    fail "the list of Debian packages could not be brought up to date; is there a network?"
  # shellcheck disable=SC2086
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -q -y --no-install-recommends ${missing//$'\n'/ } ||
    fail "these packages could not be installed: ${missing//$'\n'/ }"
}

# build PRESET TARGET…: configures and builds below build/PRESET.
build() {
  local preset=$1
  shift
  local options=()
  [ -z "${CI:-}" ] || options+=(-DTELMARION_WARNINGS_AS_ERRORS=ON)
  cmake -S "$root" --preset "$preset" "${options[@]}" >/dev/null || fail "the build could not be configured (see above)"
  cmake --build "$root/build/$preset" --target "$@" || fail "the build failed (see above)"
}

# Whether a server answers behind DISPLAY. The name is not enough: a session that has ended leaves it
# behind.
x_answers() {
  [ -n "${DISPLAY:-}" ] && xdotool getmouselocation >/dev/null 2>&1
}

# The same for WAYLAND_DISPLAY, which names a socket.
wayland_answers() {
  [ -n "${WAYLAND_DISPLAY:-}" ] && /usr/bin/python3 - 2>/dev/null <<'PYTHON'
import os
import socket

folder = os.environ.get("XDG_RUNTIME_DIR", "")
with socket.socket(socket.AF_UNIX) as door:
    door.connect(os.path.join(folder, os.environ["WAYLAND_DISPLAY"]))
PYTHON
}

# Leaves those displays in the environment that answer; fails when none does.
find_display() {
  wayland_answers || unset WAYLAND_DISPLAY
  x_answers || unset DISPLAY
  [ -n "${WAYLAND_DISPLAY:-}${DISPLAY:-}" ]
}
