#!/usr/bin/env bash
# Installs the packages with apt in a fresh Debian 12, uses the programs, the Python module and the C++
# libraries there, purges the packages and looks for what is left. Needs root, debootstrap, a network and
# about 2 GB; takes a few minutes.
#   try_fresh_root.sh PACKAGE.deb…
set -euo pipefail

[ $# -gt 0 ] || { echo "usage: $0 PACKAGE.deb…" >&2; exit 2; }
names=(telmarion python3-telmarion libtelmarion-dev)
fresh=$(mktemp -d)

leave() {
  local place
  for place in dev/pts dev sys proc; do
    ! mountpoint -q "$fresh/$place" || umount "$fresh/$place"
  done
  rm -rf --one-file-system "$fresh"
}
trap leave EXIT

inside() { chroot "$fresh" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 "$@"; }

install_packages() {
  inside DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "$@"
}

make_root() {
  debootstrap --variant=minbase bookworm "$fresh" "${MIRROR:-http://deb.debian.org/debian}"
  # The way to the network is this machine's: its name server, its proxy, its mirrors.
  cp -L /etc/resolv.conf "$fresh/etc/resolv.conf"
  apt-config dump | sed -n '/^Acquire::/{/IndexTargets\|cdrom/!p}' >"$fresh/etc/apt/apt.conf.d/50host"
  if [ -e /etc/apt/sources.list.d/debian.sources ]; then
    cp /etc/apt/sources.list.d/debian.sources "$fresh/etc/apt/sources.list.d/"
    : >"$fresh/etc/apt/sources.list"
  fi
  local place
  for place in proc sys dev dev/pts; do mount --bind "/$place" "$fresh/$place"; done
  inside apt-get update -q
}

# Opens the window, asks for the help by F1, waits until it shows, and leaves by Ctrl+Q. The window may be
# gone before the keys are let go.
use_windowed_program() {
  # shellcheck disable=SC2016
  inside HOME=/tmp timeout 60 xvfb-run --auto-servernum --server-args='-screen 0 1280x1024x24 -noreset' \
    sh -euc 'telmarion & program=$!
             xdotool search --sync --onlyvisible --name "^TELMARION$" windowfocus --sync key F1
             xdotool search --sync --onlyvisible --name "^TELMARION Help$" >/dev/null
             xdotool search --name "^TELMARION$" windowfocus --sync key ctrl+q || :
             wait $program'
}

use_cohort_program() {
  inside telmarion-batch --table /usr/share/doc/telmarion/examples/hips.csv
}

# Python leaves what it compiled beside the module, if it may.
use_python_module() {
  inside python3 -c '
import pandas, telmarion
table = pandas.read_csv("/usr/share/doc/python3-telmarion/examples/hips.csv")
print(telmarion.compute_frame(table)[["hip", "pmax", "status"]])'
}

use_cpp_libraries() {
  mkdir "$fresh/tmp/consumer"
  cat >"$fresh/tmp/consumer/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.25)
project(consumer LANGUAGES CXX)
find_package(telmarion REQUIRED)
add_executable(consumer main.cpp)
target_link_libraries(consumer PRIVATE telmarion::model telmarion::uncertainty)
CMAKE
  cat >"$fresh/tmp/consumer/main.cpp" <<'CPP'
#include <telmarion/model/hip_model.h>
int main() {
  Sila::HipState state;
  return ComputeHip({}, state) == Sila::HipOutcome::Ok ? 1 : 0;  // a hip without measurements is refused
}
CPP
  inside sh -euc 'cd /tmp/consumer && cmake -B build . && cmake --build build && build/consumer'
  rm -r "$fresh/tmp/consumer"
}

# Fails if purging leaves a file of a package, or one that bears its name outside of a user's own data.
purge() {
  local files left
  files=$(inside dpkg-query --listfiles "${names[@]}")
  rm -r "$fresh/tmp/packages"
  inside DEBIAN_FRONTEND=noninteractive apt-get purge -q -y "${names[@]}"
  left=$(while read -r file; do
           [ ! -f "$fresh$file" ] || echo "$file"
         done <<<"$files"
         find "$fresh" -xdev -iname '*telmarion*' -not -path '*/.local/share/*')
  [ -z "$left" ] || { printf 'Left behind:\n%s\n' "$left" >&2; return 1; }
}

make_root
install_packages xvfb xauth xdotool python3-pandas cmake g++ make
mkdir "$fresh/tmp/packages"
cp "$@" "$fresh/tmp/packages"
# shellcheck disable=SC2046
install_packages $(cd "$fresh" && printf '/%s\n' tmp/packages/*.deb)
use_windowed_program
use_cohort_program
use_python_module
use_cpp_libraries
purge
echo "Installed, used and purged: nothing is left."
