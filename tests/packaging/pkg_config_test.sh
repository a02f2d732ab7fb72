#!/usr/bin/env bash
# pkg_config_test.sh PREFIX LIBDIR COMPILER: the consumer by pkg-config, from a tree that was moved
# after its installation.
source "$(dirname "$0")/common.sh"

cp -r "$1" "$work/moved"
export PKG_CONFIG_PATH=$work/moved/$2/pkgconfig
read -r -a flags <<<"$(pkg-config --cflags --libs ii_ormaiac_emf)"
"$3" -std=c++14 "$(dirname "$0")/consumer/main.cpp" -o "$work/consumer" "${flags[@]}"
output=$(LD_LIBRARY_PATH=$work/moved/$2 "$work/consumer")
expect $'fdn NE=12 5\ndevice yes' "$output"
expect "$work/moved" "$(realpath "$(pkg-config --variable=prefix ii_ormaiac_emf)")"
