#!/usr/bin/env bash
# packages_in_copy.sh DIRECTORY HERE VERSION COMPILER: run by packages_test.sh in name spaces of its
# own, with the packages in DIRECTORY. Puts a writable layer over the system and goes on in there;
# with --try in place of a version it only finds out whether that can be done.
set -euo pipefail

copy=$1/copy
mkdir -p "$copy"
mount -t tmpfs tmpfs "$copy"
mkdir "$copy"/{upper,work,root}
mount -t overlay -o "lowerdir=/,upperdir=$copy/upper,workdir=$copy/work" overlay "$copy/root"
[[ $3 != --try ]] || exit 0
mount --rbind /dev "$copy/root/dev"
mount -t proc proc "$copy/root/proc"
# What lies in file systems of their own does not show through.
for directory in "$1" "$2"; do
  mkdir -p "$copy/root$directory"
  mount --bind "$directory" "$copy/root$directory"
done
exec chroot "$copy/root" "$2/installed_packages.sh" "$@"
