#!/usr/bin/env bash
# Installs what is missing, builds and runs the quick tests; with --slow, the slow ones as well. With the
# name of a preset (debug, sanitize, thread, coverage) it does so under that preset; without, under release.
set -euo pipefail
# shellcheck source=packaging/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/packaging/setup.sh"

preset=release
selection=(--label-exclude '^slow$')
for argument in "$@"; do
  case $argument in
    --slow) selection=() ;;
    -*) fail "there is no option $argument; usage: ./test.sh [PRESET] [--slow]" ;;
    *) preset=$argument ;;
  esac
done

install_packages
build "$preset" all
cd "$root"
exec ctest --preset "$preset" --parallel "$(nproc)" "${selection[@]}"
