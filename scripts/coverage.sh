#!/usr/bin/env bash
# Builds with coverage counters, runs the tests and tells how much of src/ and platform/ they reach.
#
#   scripts/coverage.sh              every test
#   scripts/coverage.sh -L unit      these, as told to ctest
#
# The report goes to build/coverage/report/: index.html for people, coverage.xml (Cobertura),
# coverage.json (gcovr) and summary.txt for programs. Branches that only an exception takes are not
# counted: the compiler makes one for nearly every call.
#
# Exit status: 0 the tests passed, 1 the build, a test or the report failed, 2 packages are missing
# and may not be installed. A test that fails does not keep the report from being written.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"

readonly build=build/coverage
readonly report=$build/report
jobs=$(nproc)

# collect reads the counters once into the report's own file, which the other forms are made from.
collect() {
  rm -rf "$report"
  mkdir -p "$report"
  gcovr --root . --object-directory "$build" --filter 'src/' --filter 'platform/' \
    --exclude-throw-branches --exclude-unreachable-branches -j "$jobs" \
    --json "$report/coverage.json" "$build"
  gcovr --root . --add-tracefile "$report/coverage.json" --xml "$report/coverage.xml" \
    --html-details "$report/index.html" --html-title "ii_ormaiac_emf"
}

# summary_of PATH... prints one line for all files below the paths: what, lines, branches.
summary_of() {
  local -a filters=()
  local path
  for path in "$@"; do filters+=(--filter "$path/"); done
  gcovr --root . --add-tracefile "$report/coverage.json" "${filters[@]}" \
    --json-summary-pretty --json-summary - |
    python3 -c '
import json, sys
total = json.load(sys.stdin)
print("%-20s lines %6d of %6d %5.1f %%   branches %6d of %6d %5.1f %%" % (
    sys.argv[1],
    total["line_covered"], total["line_total"], total["line_percent"] or 0,
    total["branch_covered"], total["branch_total"], total["branch_percent"] or 0))' "$*"
}

step "Packages"
install_packages "${emf_coverage_packages[@]}" || fail "the packages could not be installed"
cd "$root"

step "Build ($build)"
cmake --preset coverage --log-level=WARNING
cmake --build --preset coverage --parallel "$jobs"

step "Tests"
find "$build" -name '*.gcda' -delete  # the counters of earlier runs
passed=true
ctest --preset coverage --parallel "$jobs" "$@" || passed=false

step "Report ($report)"
collect || fail "the report could not be made"
{
  summary_of src
  summary_of platform
  summary_of src platform
} | tee "$report/summary.txt"
$passed || fail "tests failed; the report counts what they reached"
