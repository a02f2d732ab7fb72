#!/usr/bin/env bash
# The soak of the whole product: builds it optimised and asks it for so many minutes, eight threads
# over all operations, each answer checked; see docs/testing.md.
#
#   scripts/soak.sh 30
#   scripts/soak.sh 3 --warm-up 1 --seed 7      with options of build/soak/bin/emf_soak
#
# Exit status: 0 no mismatch and no growth, 1 otherwise, 2 packages are missing and may not be
# installed.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"

minutes=${1:-}
[[ $minutes =~ ^[0-9]+(\.[0-9]+)?$ ]] || fail "usage: scripts/soak.sh MINUTES [OPTION…]"
shift

step "Packages"
install_packages "${emf_release_packages[@]}" || fail "the packages could not be installed"

step "Build (build/soak)"
cd "$root"
cmake --preset soak --log-level=WARNING
cmake --build --preset soak --parallel "$(nproc)"

step "Soak, $minutes minutes"
exec build/soak/bin/emf_soak --minutes "$minutes" "$@"
