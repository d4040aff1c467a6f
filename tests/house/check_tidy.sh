#!/usr/bin/env bash
# Fails where clang-tidy finds fault with the program's sources. Arguments: top folder, build folder,
# run-clang-tidy. The tests are left out: their macros expand to what the checks are there to forbid.
set -euo pipefail
top=$(sed 's/[^[:alnum:]/]/\\&/g' <<<"$1") # as a regular expression
rooms='(model|uncertainty|storage|case|platform|diagram|caseform|report|view3d|app|batch|packaging)'
if ! found=$("$3" -quiet -p "$2" -j "$(nproc)" "^$top/$rooms/[^/]*\.cpp$" 2>&1); then
  grep -E -A 3 'error:|warning:' <<<"$found" || echo "$found"
  exit 1
fi
