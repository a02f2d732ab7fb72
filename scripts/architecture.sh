#!/usr/bin/env bash
# Draws docs/architecture.svg from what the libraries of the tree link. A test compares the two.
#
#   scripts/architecture.sh
#
# Exit status: 0 the picture is that of the tree, 1 something failed, 2 packages are missing and may
# not be installed.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"

install_packages "${emf_release_packages[@]}" "${emf_docs_packages[@]}" ||
  fail "the packages could not be installed"
cd "$root"
cmake --preset release --log-level=WARNING || fail "the tree cannot be configured"
/usr/bin/python3 -B scripts/lib/architecture.py build/release/structure.txt . |
  dot -Tsvg >build/architecture.svg || fail "the picture could not be drawn"
mv build/architecture.svg docs/architecture.svg
echo "docs/architecture.svg is that of the tree."
