#!/usr/bin/env bash
# Builds the packages in a fresh folder and compares them, byte for byte, with those of a given build.
# Without one it builds twice. The builds differ in folder, time, umask, language and time zone.
#   check_reproducible.sh [BUILD FOLDER]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# pack BUILD NAME: prints the folder of the packages made of a build.
pack() {
  cpack --config "$1/CPackConfig.cmake" -B "$work/$2 package" >&2
  rm -rf "$work/$2 package/_CPack_Packages"
  echo "$work/$2 package"
}

# build NAME: builds a copy of the sources and packs it.
build() {
  local sources=$work/$1
  mkdir "$sources"
  tar -C "$top" --exclude=./build --exclude=./.git -c . | tar -C "$sources" -x --touch
  # Nothing may come from a compiler cache: that would compare a build with itself.
  env -u CMAKE_CXX_COMPILER_LAUNCHER \
    cmake -S "$sources" --preset release -DTELMARION_BUILD_TESTS=OFF >&2
  cmake --build "$sources/build/release" --target package_files >&2
  pack "$sources/build/release" "$1"
}

if [ $# -gt 0 ]; then
  one=$(pack "$1" given)
else
  one=$(umask 022 && LC_ALL=C TZ=UTC build first)
fi
other=$(umask 077 && LC_ALL=C.UTF-8 TZ=Asia/Kolkata build 'a folder with another name')
sha256sum "$one"/*.deb "$other"/*.deb
diff --recursive "$one" "$other"
echo "The packages are the same."
