#!/usr/bin/env bash
# Holds the tree to its layout (clang-format) and its checks (clang-tidy).
#
#   scripts/lint.sh           layout of every file, checks on the sources changed since main
#   scripts/lint.sh --all     checks on every source
#   scripts/lint.sh FILE...   these files
#
# Exit status: 0 nothing found, 1 findings, 2 packages are missing and may not be installed.
set -uo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"

# The newest commit that the working copy shares with the main branch.
base_commit() {
  git merge-base HEAD origin/main 2>/dev/null || git merge-base HEAD main
}

install_packages "${emf_lint_packages[@]}" || fail "the packages could not be installed"
cd "$root" || exit 1
mapfile -t formatted < <(git ls-files '*.h' '*.cpp')
case ${1-} in
  '') mapfile -t checked < <(git diff --name-only --diff-filter=d "$(base_commit)" -- '*.cpp') ;;
  --all) mapfile -t checked < <(git ls-files '*.cpp') ;;
  *)
    formatted=("$@")
    mapfile -t checked < <(printf '%s\n' "$@" | grep '\.cpp$')
    ;;
esac

findings=0
step "Layout of ${#formatted[@]} files"
clang-format --dry-run -Werror "${formatted[@]}" || findings=1

step "Checks on ${#checked[@]} sources"
if ((${#checked[@]} > 0)); then
  cmake --preset dev -B build/lint -DEMF_BUILD_BENCH=ON -DEMF_PRECOMPILED_HEADERS=OFF \
    -DEMF_UNITY_TESTS=OFF --log-level=WARNING ||
    fail "the tree cannot be configured"
  printf '%s\0' "${checked[@]}" |
    xargs -0 -n 1 -P "$(nproc)" clang-tidy --quiet -p build/lint 2>/dev/null || findings=1
fi
exit "$findings"
