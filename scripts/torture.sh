#!/usr/bin/env bash
# Calls each operation of the plug-in while memory or the outside fails: each allocation and each
# outward call fails once in turn, and memory runs out from each allocation on, in a process that
# has made calls before and in one that has not. Runs under clang's address and undefined-behaviour
# sanitizers, in the build of the stage asan.
#
#   scripts/torture.sh                          all operations
#   scripts/torture.sh EMFTopoI::getAllSubMaps  those whose names hold this text
#
# At the end it prints how many operations were called and how many failures injected.
#
# Exit status: 0 all were survived, 1 the build failed or something was found, 2 packages are
# missing and may not be installed. What the program printed is kept in build/asan/torture.log.
set -uo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"

readonly log=build/asan/torture.log
export CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=$root

# sum_of WORD prints the sum of what the program counted of it.
sum_of() {
  sed -n "s/^injected: .*\b\([0-9][0-9]*\) $1.*/\1/p" "$log" | awk '{ sum += $1 } END { print sum + 0 }'
}

step "Packages"
install_packages "${emf_test_packages[@]}" || fail "the packages could not be installed"

step "Build (build/asan)"
cd "$root" || exit 1
cmake --preset asan --log-level=WARNING || fail "the tree could not be configured"
cmake --build --preset asan --parallel "$(nproc)" --target torture_test ||
  fail "the program could not be built"

step "Torture"
export EMF_TORTURE=whole
(($# == 0)) || export EMF_TORTURE_ONLY=$1
build/asan/bin/torture_test 2>&1 | tee "$log"
status=${PIPESTATUS[0]}

step "Summary"
printf '%d operations, %d failed allocations, %d failed outward calls: ' \
  "$(sed -n 's/^called: \([0-9]*\) operations$/\1/p' "$log" | sort -n | tail -n 1)" \
  "$(sum_of allocations)" "$(sum_of 'outward calls')"
if ((status != 0)); then
  printf 'FAILED\n'
  exit 1
fi
printf 'all survived\n'
