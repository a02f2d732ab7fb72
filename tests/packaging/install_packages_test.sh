#!/usr/bin/env bash
# shellcheck disable=SC2016  # the stubs expand for themselves
# install_packages_test.sh LIBRARY: what the scripts install, told from what they call. The system's
# own commands are replaced by ones that write down their words.
source "$(dirname "$0")/common.sh"

stub() {
  printf '#!/bin/bash\n%s\n' "$2" >"$work/bin/$1"
  chmod +x "$work/bin/$1"
}

# install_as ID SUDO NAME...: a shell of that user id, in which sudo answers as told.
install_as() {
  : >"$work/calls"
  stub sudo "$2"
  (
    export PATH=$work/bin:$PATH CALLS=$work/calls
    # The user id of a shell is read-only; the library reads it by name.
    sed "s/EUID/$1/" "$library" >"$work/packages.sh"
    # shellcheck source=/dev/null
    source "$work/packages.sh"
    install_packages "${@:3}" </dev/null
  ) >"$work/output" 2>&1
}

library=$1
mkdir "$work/bin"
stub dpkg-query '[[ ${!#} == here* ]] && echo -n installed'
stub apt-get 'echo "apt-get $*" >>"$CALLS"'
readonly sudo_works='[[ $1 == -n ]] && exit 0; echo "sudo $*" >>"$CALLS"; "$@"'
readonly sudo_refuses='exit 1'
readonly wanted='apt-get install --quiet=2 --yes --no-install-recommends gone-a gone-b'

install_as 0 "$sudo_refuses" here-a here-b || fail "nothing was missing, and it failed"
expect "" "$(cat "$work/calls")"

install_as 0 "$sudo_refuses" gone-a here gone-b || fail "root may install"
expect $'apt-get update --quiet=2\n'"$wanted" "$(cat "$work/calls")"

install_as 1000 "$sudo_works" gone-a here gone-b || fail "sudo may install"
expect "$wanted" "$(grep -v '^sudo' "$work/calls" | tail -n 1)"
expect 2 "$(grep -c '^sudo' "$work/calls")"

status=0
install_as 1000 "$sudo_refuses" gone-a here gone-b || status=$?
expect 2 "$status"
expect "" "$(cat "$work/calls")"
expect "  apt-get install --yes --no-install-recommends gone-a gone-b" "$(tail -n 1 "$work/output")"
