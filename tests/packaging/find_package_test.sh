#!/usr/bin/env bash
# find_package_test.sh PREFIX COMPILER: the consumer by CMake's package.
source "$(dirname "$0")/common.sh"

cmake -S "$(dirname "$0")/consumer" -B "$work" -G Ninja -DCMAKE_PREFIX_PATH="$1" \
  -DCMAKE_CXX_COMPILER="$2"
cmake --build "$work"
expect $'fdn NE=12 5\ndevice yes' "$("$work/consumer")"
