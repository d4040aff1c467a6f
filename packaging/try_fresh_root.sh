#!/usr/bin/env bash
# Installs the package with apt in a fresh Debian 12, uses both programs there, purges the package and
# looks for what is left. Needs root, debootstrap, a network and about 1 GB; takes a few minutes.
#   try_fresh_root.sh PACKAGE.deb
set -euo pipefail

[ $# -eq 1 ] || { echo "usage: $0 PACKAGE.deb" >&2; exit 2; }
package=$(realpath "$1")
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

# Fails if purging leaves a file of the package, or one that bears its name outside of a user's own data.
purge() {
  local files left
  files=$(inside dpkg-query --listfiles telmarion)
  rm "$fresh/tmp/telmarion.deb"
  inside DEBIAN_FRONTEND=noninteractive apt-get purge -q -y telmarion
  left=$(while read -r file; do
           [ ! -f "$fresh$file" ] || echo "$file"
         done <<<"$files"
         find "$fresh" -xdev -iname '*telmarion*' -not -path '*/.local/share/*')
  [ -z "$left" ] || { printf 'Left behind:\n%s\n' "$left" >&2; return 1; }
}

make_root
install_packages xvfb xauth xdotool
cp "$package" "$fresh/tmp/telmarion.deb"
install_packages /tmp/telmarion.deb
use_windowed_program
use_cohort_program
purge
echo "Installed, used and purged: nothing is left."
