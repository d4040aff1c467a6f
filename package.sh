#!/usr/bin/env bash
# Installs what is missing, builds, and leaves the Debian packages in build/release/: the programs, the
# Python module, the C++ libraries.
set -euo pipefail
# shellcheck source=packaging/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/packaging/setup.sh"

install_packages
build release package_files
cd "$root/build/release"
rm -f ./*.deb
cpack >/dev/null || fail "the packages could not be made (see above)"
printf 'Made %s\n' "$root"/build/release/*.deb
