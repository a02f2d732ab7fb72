#!/usr/bin/env bash
# shellcheck disable=SC2016  # the patterns hold dollar signs
# hardening_test.sh SOURCE COMPILER [PREFIX]: what the hardening flags did to a small optimised
# program and its library and, where the tree itself is optimised, to everything that it installs.
source "$(dirname "$0")/common.sh"
# shellcheck source=../../scripts/lib/hardening.sh
source "$1/scripts/lib/hardening.sh"

expect_hardened() {
  local file faults
  [[ -n $(elf_files "$1") ]] || fail "there is nothing to check in $1"
  while read -r file; do
    faults=$(hardening_faults "$file")
    [[ -z $faults ]] || fail "$faults"
  done < <(elf_files "$1")
}

# build TYPE: the small program, in a directory of that name.
build() {
  cmake -S "$here/hardened" -B "$work/$1" -G Ninja -DCMAKE_BUILD_TYPE="$1" \
    -DCMAKE_CXX_COMPILER="$compiler" -DEMF_MODULE_DIR="$source/cmake"
  cmake --build "$work/$1"
}

# died_of TEXT: the program was ended, and said so.
died_of() {
  [[ $status -eq 134 && $(cat "$work/died") == *"$1"* ]] || fail "status $status: $(cat "$work/died")"
}

here=$(cd "$(dirname "$0")" && pwd)
source=$1
compiler=$2
build Release
expect_hardened "$work/Release/bin"
expect_hardened "$work/Release/lib"

# A copy of what fits goes through, one that is too long is caught by the fortified function.
"$work/Release/bin/program" hello || fail "the hardened program does not work"
status=0
(ulimit -c 0; "$work/Release/bin/program" "$(printf 'a%.0s' {1..300})") 2>"$work/died" || status=$?
died_of "buffer overflow detected"

# What a linked file does not tell, the object does.
object=$(find "$work/Release" -name 'stack.cpp.o')
if [[ $(uname -m) == x86_64 ]]; then
  [[ $(readelf --notes "$object") == *"IBT, SHSTK"* ]] || fail "no control-flow protection"
  # g++ probes by or, clang++ by mov.
  objdump -d "$object" | grep -Eq '(or|mov)q +\$0x0,\(%rsp\)' ||
    fail "the stack is not probed page by page"
fi

# The check itself finds what is missing.
build Debug
faults=$(hardening_faults "$work/Debug/lib/libstack.so")
[[ $faults == *"binds lazily"*"no stack protector"* ]] || fail "a debug build passes: $faults"

[[ $# -lt 3 ]] || expect_hardened "$3"
