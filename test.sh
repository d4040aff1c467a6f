#!/usr/bin/env bash
# Installs what is missing, builds and runs every test. With the name of a preset (debug, sanitize,
# thread, coverage) it does so under that preset; without, under release.
set -euo pipefail
# shellcheck source=packaging/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/packaging/setup.sh"

preset=${1:-release}
install_packages
build "$preset" all
cd "$root"
exec ctest --preset "$preset" --parallel "$(nproc)"
