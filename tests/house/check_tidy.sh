#!/usr/bin/env bash
# Fails where clang-tidy finds fault with the program's sources. Arguments: build folder, run-clang-tidy.
# The tests are left out: their macros expand to what the checks are there to forbid.
set -euo pipefail
rooms='(model|storage|case|platform|diagram|caseform|report|view3d|app|batch|packaging)'
if ! found=$("$2" -quiet -p "$1" -j "$(nproc)" "^(?!.*/(tests|build)/).*/$rooms/[^/]*\.cpp$" 2>&1); then
  grep -E -A 3 'error:|warning:' <<<"$found"
  exit 1
fi
