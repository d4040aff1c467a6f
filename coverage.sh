#!/usr/bin/env bash
# Counts the lines that the tests run. Installs what is missing, builds the coverage preset, runs every test
# of the program, and writes the report below build/coverage/covered_lines. Fails when a test does, or when a
# part of the core has fewer than 95 % of its lines run.
set -euo pipefail
# shellcheck source=packaging/setup.sh
source "$(dirname "${BASH_SOURCE[0]}")/packaging/setup.sh"

least=95 # percent
core=('model/' 'columns/' 'landmarks/' 'case/' 'caseform/' 'storage/')
rooms=(model uncertainty columns landmarks storage case platform diagram caseform report view3d radiograph measuring app batch)
report=build/coverage/covered_lines

# counted PATTERN [OPTION…]: reads the counts of the files that begin so. gcovr always writes a report
# and puts it in the place of what is there, of a device too: it gets a file.
counted() {
  local pattern=$1
  shift
  gcovr --root . --add-tracefile "$report/counts.json" --filter "$pattern" "$@"
}

# Prints what part of the lines of such files was run.
lines() {
  printf '%-28s%s\n' "$1" \
    "$(counted "$1" --print-summary --output "$report/part.txt" | sed -n 's/^lines: //p')"
}

install_packages
build coverage all
cd "$root"
find build/coverage -name '*.gcda' -delete # what earlier runs counted
ctest --preset coverage --exclude-regex '^house: ' --parallel "$(nproc)"

mkdir -p "$report"
gcovr --root . --object-directory build/coverage --filter "($(IFS='|'; echo "${rooms[*]}"))/" \
  --json "$report/counts.json"
counted '.*' --txt "$report/lines.txt" --html-details "$report/index.html"

for room in "${rooms[@]}"; do lines "$room/"; done
echo
short=0
for part in "${core[@]}"; do
  lines "$part"
  counted "$part" --fail-under-line "$least" --output "$report/part.txt" || short=1
done
echo "The lines that were not run: $report/lines.txt; beside the sources: $report/index.html"
[ "$short" -eq 0 ] || fail "a part of the core has fewer than $least % of its lines run"
