#!/usr/bin/env bash
# Installs what is missing, builds the release preset and runs the main job: the cohort program over
# the example hips, or over the files named on the command line.
set -euo pipefail
# shellcheck source=packaging/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/packaging/setup.sh"

install_packages
build release telmarion-batch

if [ $# -gt 0 ]; then
  exec "$root/build/release/batch/telmarion-batch" "$@"
fi
exec "$root/build/release/batch/telmarion-batch" --table "$root/examples/hips.csv"
