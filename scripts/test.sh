#!/usr/bin/env bash
# Installs what the tests need, builds and runs them, in stages:
#
#   dev    g++, every test
#   asan   the whole tree by clang++ with address and undefined-behaviour sanitizers; the unit tests
#   tsan   thread sanitizer, the tests that use threads
#
#   scripts/test.sh             all stages
#   scripts/test.sh dev tsan    these stages
#
# Exit status: 0 every stage passed, 1 one failed, 2 packages are missing and may not be installed.
# What ctest printed is kept in build/<stage>/ctest.log; what failed is told again at the end.
set -uo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"

readonly all_stages=(dev asan tsan)
jobs=$(nproc)
# The packaging tests, and other clones of the tree, build the same sources in other directories;
# their objects come from the cache.
export CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=$root
summary=()
failures=0

build_stage() {
  cmake --preset "$1" --log-level=WARNING && cmake --build --preset "$1" --parallel "$jobs"
}

# One more than there are processors, since many tests wait for a deadline.
test_stage() {
  ctest --preset "$1" --parallel $((jobs + 1)) 2>&1 | tee "build/$1/ctest.log"
}

# closing_line STAGE prints ctest's own count of the stage.
closing_line() {
  grep -E 'tests passed, [0-9]+ tests? failed out of' "build/$1/ctest.log" || echo 'no tests ran'
}

# failures_of STAGE prints what each failed test printed, cut to its first lines.
failures_of() {
  [[ -f build/$1/ctest.log ]] || return 0
  awk -v stage="$1" '
    / Test +#[0-9]+: / {
      told = /\*\*\*/ && !/\*\*\*Skipped/ ? 60 : 0
      gsub(/\.\.\.+/, "...")
      if (told) { print stage ":" $0; next }
    }
    /^ +Start +[0-9]+: / { next }
    /% tests passed, / { exit }
    told > 0 { print "    " $0; told-- }' "build/$1/ctest.log"
}

run_stage() {
  local stage=$1 start=$SECONDS built result
  rm -f "build/$stage/ctest.log"
  step "$stage: build"
  if ! build_stage "$stage"; then
    summary+=("$(printf '%-6s FAILED  the build failed' "$stage")")
    return 1
  fi
  built=$((SECONDS - start))
  step "$stage: tests"
  if test_stage "$stage"; then result=passed; else result=FAILED; fi
  summary+=("$(printf '%-6s %-7s %s (build %d s, tests %d s)' "$stage" "$result" \
    "$(closing_line "$stage")" "$built" $((SECONDS - start - built)))")
  [[ $result == passed ]]
}

stages=("$@")
((${#stages[@]} > 0)) || stages=("${all_stages[@]}")
for stage in "${stages[@]}"; do
  [[ " ${all_stages[*]} " == *" $stage "* ]] || fail "no stage \"$stage\"; there are: ${all_stages[*]}"
done

step "Packages"
install_packages "${emf_test_packages[@]}" || fail "the packages could not be installed"
cd "$root" || exit 1
for stage in "${stages[@]}"; do
  run_stage "$stage" || failures=$((failures + 1))
done

if ((failures > 0)); then
  step "Failures"
  for stage in "${stages[@]}"; do failures_of "$stage"; done
fi

step "Summary"
printf '%s\n' "${summary[@]}"
((failures == 0))
