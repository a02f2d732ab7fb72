#!/usr/bin/env bash
# Stores the description of the plug-in's binary interface, with which the tests compare the library.
# For deliberate changes: what differs is shown. Code that was built before lives with additions; any
# other change is refused unless kEmfInterfaceVersion (include/emfinterfaceversion.h) was raised.
#
#   scripts/abi-update.sh [LIBRARY] [DIRECTORY]
#
# LIBRARY is a debug build by g++, build/dev/lib/libii_ormaiac_emf.so without one; DIRECTORY holds
# the description, abi/ without one.
#
# Exit status: 0 the description is that of the library, 1 the change was refused or something
# failed, 2 packages are missing and may not be installed.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"
# shellcheck source=lib/abi.sh
source "$here/lib/abi.sh"

install_packages abigail-tools || fail "the package could not be installed"
library=${1:-$root/build/dev/lib/libii_ormaiac_emf.so}
directory=${2:-$root/abi}
description=$directory/libii_ormaiac_emf.abi
[[ -e $library ]] || fail "there is no $library; build it first: cmake --build --preset dev"
version=$(header_version)
new=$(mktemp)
trap 'rm -f "$new"' EXIT
describe_interface "$library" "$new"

if [[ -e $description ]] && ! compare_descriptions "$description" "$new"; then
  stored=$(cat "$directory/interface_version")
  if ! compare_descriptions "$description" "$new" --no-added-syms >/dev/null &&
    ((version <= stored)); then
    fail "code that was built before would not live with this change: raise kEmfInterfaceVersion" \
      "above $stored in include/emfinterfaceversion.h, then again"
  fi
fi
cp "$new" "$description"
echo "$version" >"$directory/interface_version"
echo "$description is that of the library, for interface version $version."
