#!/usr/bin/env bash
# platform_dir_test.sh SOURCE BUILD COMPILER: the plug-in with a platform that is a directory of
# sources; neither host nor simulator is built.
source "$(dirname "$0")/common.sh"

# Beside the tree's own build, where the compiler cache finds each object by the same relative paths.
rmdir "$work"
work=$(mktemp -d "$2.XXXXXX")
cmake -S "$1" -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER="$3" \
  -DEMF_WARNINGS_AS_ERRORS=ON -DEMF_PLATFORM_DIR="$1/platform"
cmake --build "$work"
[[ -e $work/lib/libii_ormaiac_emf.so ]] || fail "there is no plug-in"
[[ ! -e $work/bin ]] || fail "programs were built: $(ls "$work/bin")"
