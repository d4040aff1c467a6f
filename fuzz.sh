#!/usr/bin/env bash
# Installs what is missing, builds the fuzz targets and runs each for a minute, or for as many seconds
# as told. Fails when an input crashes one or breaks what it checks; the input is then kept in
# tests/fuzz/crashes/TARGET, from where ./test.sh runs it too.
set -euo pipefail
# shellcheck source=packaging/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/packaging/setup.sh"

seconds=${1:-60}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || fail "how many seconds? $seconds is no whole number above 0"
install_packages
build fuzz fuzzers
cd "$root/tests/fuzz"

# DCMTK reserves, without filling it, what an element says its length is: up to 4 GiB.
memory=(-malloc_limit_mb=4100)

found=()
for words in words/*.dict; do
  target=$(basename "$words" .dict)
  corpus=$root/build/fuzz/corpus/$target # grows from run to run
  mkdir -p "$corpus" "crashes/$target"
  printf '\n%s for %s seconds\n' "$target" "$seconds"
  "$root/build/fuzz/tests/fuzz/${target}_fuzz" -max_total_time="$seconds" -timeout=10 "${memory[@]}" \
    -dict="$words" -artifact_prefix="crashes/$target/" -print_final_stats=1 -verbosity=0 -print_funcs=0 \
    "$corpus" "seeds/$target" "crashes/$target" "$root/tests/files" "$root/examples" ||
    found+=("$target")
  rmdir --ignore-fail-on-non-empty "crashes/$target"
done
rmdir --ignore-fail-on-non-empty crashes
[ ${#found[@]} -eq 0 ] || fail "found something in: ${found[*]}; the inputs are in tests/fuzz/crashes"
