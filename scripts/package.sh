#!/usr/bin/env bash
# Makes the Debian packages from a release build, and checks them: lintian without errors, every
# program and library hardened.
#
#   scripts/package.sh [DIRECTORY]    packages go to DIRECTORY, build/packages without one
#
# Exit status: 0 the packages are there and sound, 1 something failed, 2 build packages are missing
# and may not be installed.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"
# shellcheck source=lib/hardening.sh
source "$here/lib/hardening.sh"

step "Packages that the build needs"
install_packages "${emf_package_packages[@]}" || fail "the packages could not be installed"
cd "$root"
directory=$(realpath -m "${1:-build/packages}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

step "Build (build/release)"
cmake --preset release --log-level=WARNING || fail "the build could not be configured"
cmake --build --preset release || fail "the build failed"

step "Packages"
cpack -G DEB --config build/release/CPackConfig.cmake -B "$work/cpack"
mkdir -p "$directory"
mv "$work"/cpack/*.deb "$directory"

step "Checks"
lintian --fail-on error "$directory"/*.deb || fail "lintian found errors"
faults=
for package in "$directory"/*.deb; do
  dpkg-deb --extract "$package" "$work/content"
done
while read -r file; do
  faults+=$(hardening_faults "$file")
done < <(elf_files "$work/content")
[[ -z $faults ]] || fail "$faults"
echo "Every program and library is hardened."

step "Done"
ls -l "$directory"/*.deb
