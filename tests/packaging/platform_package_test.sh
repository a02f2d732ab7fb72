#!/usr/bin/env bash
# platform_package_test.sh SOURCE PREFIX COMPILER: the plug-in alone, against a site's own platform
# libraries and its TAO. Loading it makes the ORB's two load-time calls, once each.
source "$(dirname "$0")/common.sh"

here=$(cd "$(dirname "$0")" && pwd)
cmake -S "$here/tao" -B "$work/tao" -G Ninja -DCMAKE_CXX_COMPILER="$3"
cmake --build "$work/tao"
cmake --install "$work/tao" --prefix "$work/tao-installed"

cmake -S "$1" -B "$work/plugin" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER="$3" \
  -DCMAKE_CXX_FLAGS_DEBUG=-O0 \
  -DEMF_PLATFORM_PACKAGE=site_platform -DEMF_WITH_TAO=ON \
  -DCMAKE_PREFIX_PATH="$here/platform_package;$2;$work/tao-installed" | tee "$work/configured"
grep -q 'TAO: found' "$work/configured" || fail "the summary does not say that TAO was found"
cmake --build "$work/plugin"
[[ ! -e $work/plugin/bin ]] || fail "programs were built: $(ls "$work/plugin/bin")"
if compgen -G "$work/plugin/lib/liborma_*" >/dev/null; then fail "platform/ was built"; fi

plugin=$work/plugin/lib/libii_ormaiac_emf.so
expect $'before 0 0\nafter 1 1' "$("$work/tao/load" "$plugin")"
