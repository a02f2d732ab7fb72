#!/usr/bin/env bash
# description_test.sh SOURCE LIBRARY: the library's binary interface is the one that is described;
# a change shows, and updating the description tells additions from what breaks older code.
set -euo pipefail

root=$1
library=$2
fail() {
  printf 'FAILED: %s\n' "$*" >&2
  exit 1
}

for tool in abidw abidiff; do
  command -v "$tool" >/dev/null || { echo "SKIPPED: there is no $tool"; exit 77; }
done
# shellcheck source=../../scripts/lib/abi.sh
source "$root/scripts/lib/abi.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
stored=$root/abi/libii_ormaiac_emf.abi

describe_interface "$library" "$work/given"
compare_descriptions "$stored" "$work/given" ||
  fail "the binary interface has changed; where that is meant: scripts/abi-update.sh $library"
[[ $(cat "$root/abi/interface_version") == "$(header_version)" ]] ||
  fail "the description is of another interface version than the headers; scripts/abi-update.sh"

# stored_with EXPRESSION: a description, as if the interface had been another one before.
stored_with() {
  sed "$1" "$stored" >"$work/libii_ormaiac_emf.abi"
  ! cmp -s "$stored" "$work/libii_ormaiac_emf.abi" || fail "$1 changed nothing"
  header_version >"$work/interface_version"
}
update() { "$root/scripts/abi-update.sh" "$library" "$work" >"$work/log" 2>&1; }

# A field that has moved.
stored_with "/class-decl name='Device'/,/var-decl name='name'/s/layout-offset-in-bits='448'/layout-offset-in-bits='480'/"
! compare_descriptions "$work/libii_ormaiac_emf.abi" "$work/given" >"$work/log" ||
  fail "a field that has moved goes unnoticed"
! update || fail "a field that has moved was taken without a new interface version"
grep -q 'raise kEmfInterfaceVersion above' "$work/log" || fail "$(cat "$work/log")"
# With a higher version in the headers than in the description it is taken.
echo $(($(header_version) - 1)) >"$work/interface_version"
update || fail "$(cat "$work/log")"
compare_descriptions "$stored" "$work/libii_ormaiac_emf.abi" ||
  fail "the same library gives another description"

# A function that came since.
symbol=_ZN8EMFTopoI9getDeviceElR6Device
stored_with "/<member-function/{:a;/<\\/member-function>/!{N;ba};/$symbol/d};/elf-symbol name='$symbol'/d"
! compare_descriptions "$work/libii_ormaiac_emf.abi" "$work/given" >"$work/log" ||
  fail "a new function goes unnoticed"
update || fail "an addition was refused: $(cat "$work/log")"
compare_descriptions "$stored" "$work/libii_ormaiac_emf.abi" ||
  fail "the addition is not in the description"
