#!/usr/bin/env bash
# Builds the API reference from the public headers: build/docs/html/index.html.
#
#   scripts/docs.sh
#
# Exit status: 0 it is there, 1 Doxygen failed or warned, 2 packages are missing and may not be
# installed.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"

install_packages "${emf_docs_packages[@]}" || fail "the packages could not be installed"
cd "$root"
mkdir -p build
rm -rf build/docs
doxygen docs/Doxyfile || fail "Doxygen failed or warned, see above"
echo "The reference is $root/build/docs/html/index.html."
