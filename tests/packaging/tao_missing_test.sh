#!/usr/bin/env bash
# tao_missing_test.sh SOURCE COMPILER: where TAO is asked for and not there, configuring fails and
# says so; where it is not asked for, the summary says how the plug-in is built.
source "$(dirname "$0")/common.sh"

if cmake -S "$1" -B "$work/on" -G Ninja -DCMAKE_CXX_COMPILER="$2" -DEMF_WITH_TAO=ON \
  -DEMF_BUILD_TESTS=OFF >"$work/on.log" 2>&1; then
  fail "it was configured without TAO"
fi
# CMake breaks the lines of a message.
message=$(tr -s ' \n' ' ' <"$work/on.log")
[[ $message == *"EMF_WITH_TAO=ON, but TAO's headers or libTAO.so;"*"Install TAO 2.x"* ]] ||
  fail "the reason is not told: $message"

cmake -S "$1" -B "$work/auto" -G Ninja -DCMAKE_CXX_COMPILER="$2" -DEMF_BUILD_TESTS=OFF \
  >"$work/auto.log"
grep -q 'TAO: not found; the plug-in is built without' "$work/auto.log" ||
  fail "the summary does not say that TAO is missing"
