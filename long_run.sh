#!/usr/bin/env bash
# Installs what is missing, builds, and works with the program for 10,000 rounds, or as many as the
# command line says; prints how memory, handles and the time of a round went, and fails when they grow.
set -euo pipefail
# shellcheck source=packaging/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/packaging/setup.sh"

install_packages
build release long_run_test
# Files in memory: the disk is not what is measured.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm
export TELMARION_ROUNDS=${1:-10000}
exec "$root/build/release/tests/longrun/long_run_test"
