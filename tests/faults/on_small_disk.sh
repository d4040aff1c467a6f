#!/usr/bin/env bash
# Runs a program with its temporary files on a file system of its own of 16 MiB, which nobody else sees
# and which goes with it. Where mounting is not permitted TELMARION_SMALL_DISK stays empty, and the
# program limits the size of its files instead. Arguments: the program and its arguments.
set -euo pipefail
disk=$(mktemp -d)
trap 'rmdir "$disk"' EXIT
# shellcheck disable=SC2016
mount_and_run='mount -t tmpfs -o size=16m none "$1" && shift && "$@"'
alone=(unshare --map-root-user --mount sh -c "$mount_and_run" sh "$disk")
if "${alone[@]}" true 2>/dev/null; then
  TELMARION_SMALL_DISK=$disk TMPDIR=$disk "${alone[@]}" "$@"
else
  TELMARION_SMALL_DISK='' "$@"
fi
