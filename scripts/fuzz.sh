#!/usr/bin/env bash
# Builds the fuzz targets and runs each for a number of seconds, from its corpus in fuzz/corpus.
#
#   scripts/fuzz.sh 60                      all targets
#   scripts/fuzz.sh 600 asn1_sequence fdn   these
#
# What a target finds is kept: inputs that reach new code in build/fuzz/corpus/TARGET, inputs that
# fail in build/fuzz/failures/TARGET. An input worth keeping goes into fuzz/corpus/TARGET.
#
# Exit status: 0 nothing found, 1 a target failed, 2 packages are missing and may not be installed.
set -uo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"

seconds=${1-}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || fail "give a number of seconds, and perhaps targets"
shift

# run_target NAME; the corpus that grows comes first, the one that is kept second.
run_target() {
  local grown=build/fuzz/corpus/$1 failures=build/fuzz/failures/$1
  mkdir -p "$grown" "$failures"
  "build/fuzz/bin/$1_fuzz" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
    -max_len=65536 -print_final_stats=1 -artifact_prefix="$failures/" "$grown" "fuzz/corpus/$1"
}

step "Packages"
install_packages "${emf_fuzz_packages[@]}" || fail "the packages could not be installed"

step "Build (build/fuzz)"
cd "$root" || exit 1
cmake --preset fuzz --log-level=WARNING || fail "the tree could not be configured"
cmake --build --preset fuzz --parallel "$(nproc)" || fail "the targets could not be built"

targets=("$@")
if ((${#targets[@]} == 0)); then
  for program in build/fuzz/bin/*_fuzz; do targets+=("$(basename "$program" _fuzz)"); done
fi
failed=()
for target in "${targets[@]}"; do
  step "$target: $seconds s"
  [[ -x build/fuzz/bin/${target}_fuzz ]] || fail "there is no target \"$target\""
  run_target "$target" || failed+=("$target")
done

step "Summary"
if ((${#failed[@]} > 0)); then
  printf 'FAILED: %s; the inputs are in build/fuzz/failures\n' "${failed[*]}"
  exit 1
fi
printf '%d targets, nothing found\n' "${#targets[@]}"
