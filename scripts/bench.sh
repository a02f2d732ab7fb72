#!/usr/bin/env bash
# Builds the benchmarks and runs them; their figures go to build/bench/results/<name>.json.
#
#   scripts/bench.sh                      all benchmarks
#   scripts/bench.sh devices trace        these
#   EMF_BENCH_ARGS='--benchmark_repetitions=9' scripts/bench.sh devices
#
# Exit status: 0 all ran, 1 one failed, 2 packages are missing and may not be installed.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"

step "Packages"
install_packages "${emf_bench_packages[@]}" || fail "the packages could not be installed"

step "Build (build/bench)"
cd "$root"
cmake --preset bench --log-level=WARNING
cmake --build --preset bench --parallel "$(nproc)"

names=("$@")
if ((${#names[@]} == 0)); then
  for source in bench/*_bench.cpp; do names+=("$(basename "$source" _bench.cpp)"); done
fi
results=build/bench/results
mkdir -p "$results"
read -r -a arguments <<<"${EMF_BENCH_ARGS:-}"

failures=0
for name in "${names[@]}"; do
  step "$name"
  "build/bench/bin/${name}_bench" --benchmark_out="$results/$name.json" \
    --benchmark_out_format=json "${arguments[@]}" || failures=$((failures + 1))
done
((failures == 0)) || fail "$failures of ${#names[@]} benchmarks failed"
