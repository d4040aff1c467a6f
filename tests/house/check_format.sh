#!/usr/bin/env bash
# Fails where clang-format would change a source file. Mend with: clang-format-14 -i FILE…
set -euo pipefail
cd "$1"
find . -path ./build -prune -o \( -name '*.h' -o -name '*.cpp' \) -print0 |
  xargs -0 "$2" --dry-run --Werror --style=file
