# shellcheck shell=bash
# The plug-in's binary interface as libabigail sees it: exported functions and the types that they
# speak of, as the headers in include/ declare them. Sourced, not run; `root` is the tree.

# describe_interface LIBRARY FILE: needs a library with debug information.
describe_interface() {
  abidw --exported-interfaces-only --drop-private-types --headers-dir "$root/include" \
    --suppressions "$root/abi/suppressions" --no-show-locs --no-comp-dir-path --no-corpus-path \
    --type-id-style hash "$1" |
    # The paths of sources depend on where the tree and the build lie.
    sed "s|path='[^']*/src/|path='src/|" >"$2"
}

# compare_descriptions OLD NEW [OPTION...] prints what differs, and fails if anything does.
compare_descriptions() {
  abidiff "${@:3}" "$1" "$2"
}

# header_version prints the interface version that the headers name.
header_version() {
  sed -n 's/^constexpr int kEmfInterfaceVersion = \([0-9]*\);$/\1/p' \
    "$root/include/emfinterfaceversion.h"
}
