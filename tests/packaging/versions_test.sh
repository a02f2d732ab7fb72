#!/usr/bin/env bash
# versions_test.sh SOURCE VERSION PROGRAM: the changelog of the packages, the build and the manual
# pages speak of one version and one day.
source "$(dirname "$0")/common.sh"

changelog=$1/packaging/changelog
read -r _ version _ <"$changelog"
expect "($2)" "$version"
day=$(date --utc --date "$(sed -n '/^ -- /{s/^ -- .*>  //p;q}' "$changelog")" +%F)
expect "$day \"ii_ormaiac_emf $2\"" "$("$3" --generate man | sed -n '1s/^[^ ]* [^ ]* [^ ]* //p')"
