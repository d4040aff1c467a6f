#!/usr/bin/env bash
# Packs the packages that CPack made once more. CPack lets the umask of the one who builds into the modes,
# and the file system into the installed size.
#   SOURCE_DATE_EPOCH=… repack.sh PACKAGE.deb…
set -euo pipefail

repack() {
  local package=$1 work=$2 size
  dpkg-deb --raw-extract "$package" "$work"
  chmod -R u=rwX,go=rX "$work"
  # As Debian counts: files in whole KiB, and one for each folder.
  size=$(find "$work/usr" -type f -printf '%s\n' -o -printf '1024\n' |
    awk '{ kib += int(($1 + 1023) / 1024) } END { print kib }')
  sed -i "s/^Installed-Size:.*/Installed-Size: $size/" "$work/DEBIAN/control"
  find "$work" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
  dpkg-deb --root-owner-group -Zxz --threads-max=1 --build "$work" "$package" >/dev/null
}

all=$(mktemp -d)
trap 'rm -rf "$all"' EXIT
for package in "$@"; do
  repack "$package" "$all/$(basename "$package" .deb)"
done
