#!/usr/bin/env bash
# Builds the package in a fresh folder and compares it, byte for byte, with a given one. Without one it
# builds twice. The builds differ in folder, time, file system, umask, language and time zone.
#   check_reproducible.sh [PACKAGE.deb]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# build FOLDER: packs a copy of the sources that lies in FOLDER; prints the package's path.
build() {
  local folder=$1
  mkdir -p "$folder"
  tar -C "$top" --exclude=./build --exclude=./.git -c . | tar -C "$folder" -x --touch
  # Nothing may come from a compiler cache: that would compare a build with itself.
  env -u CMAKE_CXX_COMPILER_LAUNCHER cmake -S "$folder" --preset release -DTELMARION_BUILD_TESTS=OFF >&2
  cmake --build "$folder/build/release" --target package_files >&2
  (cd "$folder/build/release" && cpack >&2)
  ls "$folder"/build/release/*.deb
}

if [ $# -gt 0 ]; then
  one=$1
else
  one=$(umask 022 && LC_ALL=C TZ=UTC build "$work/one")
fi
other=$(umask 077 && LC_ALL=C.UTF-8 TZ=Asia/Kolkata build "$work/a folder/with another name")
sha256sum "$one" "$other"
cmp "$one" "$other"
echo "The packages are the same."
