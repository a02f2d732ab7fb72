#!/usr/bin/env bash
# packages_test.sh BUILD VERSION COMPILER: the Debian packages are made and sound; installed into a
# copy of this system that is thrown away afterwards, agent and simulator work together, code builds
# against the headers, and a removal leaves nothing behind.
source "$(dirname "$0")/common.sh"

build=$1
version=$2
here=$(cd "$(dirname "$0")" && pwd)
readonly names=(ii-ormaiac-emf ii-ormaiac-emf-dev ormaagent ormasim)

skip() {
  echo "SKIPPED: $*"
  exit 77
}

for tool in cpack dpkg-deb dpkg-shlibdeps lintian unshare; do
  command -v "$tool" >/dev/null || skip "there is no $tool"
done

# Under the mask of a careful user; everybody is to read what is installed.
(umask 077 && cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/packages") \
  >"$work/cpack.log" 2>&1 || fail "$(cat "$work/cpack.log")"
mv "$work"/packages/*.deb "$work"
for name in "${names[@]}"; do
  file=$(compgen -G "$work/${name}_${version}_*.deb") || fail "there is no package $name"
  expect "$name $version" "$(dpkg-deb --show --showformat '${Package} ${Version}' "$file")"
  closed=$(dpkg-deb --contents "$file" | grep -v '^.......r' || true)
  [[ -z $closed ]] || fail "not for everybody to read: $closed"
done

# Its warning about the user that it runs as is no finding.
lintian --fail-on error "$work"/*.deb 2>/dev/null >"$work/lintian.log" ||
  fail "lintian: $(grep '^E:' "$work/lintian.log")"

# The copy: this system below, everything that is written on top of it in memory.
if ((EUID != 0)) ||
  ! unshare --mount "$here/packages_in_copy.sh" "$work" "$here" --try 2>/dev/null; then
  skip "packages were made and are sound; installing them needs root and mounts of its own"
fi
unshare --mount --pid --fork --kill-child \
  "$here/packages_in_copy.sh" "$work" "$here" "$version" "$3" || fail "in the copy of the system"
for name in "${names[@]}"; do
  [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null) != installed ]] ||
    fail "$name was installed into this system itself"
done
