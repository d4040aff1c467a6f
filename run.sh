#!/usr/bin/env bash
# Installs what is missing, builds the release preset and opens the window. Without a display it says so
# and computes the example hips; with files on the command line it computes those.
set -euo pipefail
# shellcheck source=packaging/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/packaging/setup.sh"

install_packages
build release telmarion telmarion-batch

if [ $# -gt 0 ]; then
  exec "$root/build/release/batch/telmarion-batch" "$@"
fi
if find_display; then
  exec "$root/build/release/app/telmarion"
fi
echo "There is no display to open a window on; these are the example hips, computed."
exec "$root/build/release/batch/telmarion-batch" --table "$root/examples/hips.csv"
