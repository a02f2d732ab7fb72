#!/usr/bin/env bash
# installed_packages.sh DIRECTORY HERE VERSION COMPILER: installs the packages of DIRECTORY into the
# system that it runs in, tries them and removes them. Only for a system that is thrown away.
set -euo pipefail

packages=$1
here=$2
version=$3
compiler=$4
work=$(mktemp -d /tmp/packages.XXXXXX)
readonly names=(ii-ormaiac-emf ii-ormaiac-emf-dev ormaagent ormasim)
readonly configuration=/etc/ormaagent/ormaagent.json
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8

fail() {
  printf 'FAILED: %s\n' "$*" >&2
  exit 1
}

# expect WANTED GIVEN
expect() {
  [[ $1 == "$2" ]] || fail "expected \"$1\", got \"$2\""
}

install_all() {
  dpkg --install "$packages"/*.deb >"$work/dpkg.log" 2>&1 || fail "$(cat "$work/dpkg.log")"
}

install_all
dpkg-query --listfiles "${names[@]}" | sort -u >"$work/files"
[[ -e $configuration ]] || fail "there is no $configuration"
expect "$configuration" "$(dpkg-query -W -f '${Conffiles}' ormaagent | awk 'NF { print $1 }')"

# The programs find their libraries where the system looks for them.
for program in ormaagent ormasim; do
  expect "$program $version" "$("$program" --version)"
done
expect "" "$(ldd /usr/bin/ormaagent /usr/lib/libii_ormaiac_emf.so | grep 'not found' || true)"
[[ -n $(man -w ormaagent.json) && -n $(man -w ormasim) ]] || fail "manual pages are missing"
systemd-analyze verify ormaagent.service 2>"$work/verify.log" || fail "$(cat "$work/verify.log")"
! grep ormaagent "$work/verify.log" || fail "systemd has something to say about the unit"

# The configuration that is delivered is sound, and survives a change and a further installation.
ormaagent --config "$configuration" config check
sed -i 's/"level": 1/"level": 0/' "$configuration"
install_all
grep -q '"level": 0' "$configuration" || fail "the changed configuration was overwritten"

# Simulator and agent, each from its package.
ormasim generate --elements 3 --db "$work/network.db"
mkfifo "$work/ready"
ormasim serve --db "$work/network.db" --agent-config "$work/agent.json" >"$work/ready" &
simulator=$!
read -r -t 60 ready <"$work/ready" || fail "the simulator did not become ready"
expect '{"httpPort": ' "${ready:0:13}"
port=${ready#*: }
expect 4 "$(ormaagent --config "$work/agent.json" --format csv topo devices | wc -l)"
text=$(ormaagent --config "$work/agent.json" --format csv error-text 0x411800CC)
[[ $text != *unknown* ]] || fail "the error texts are not found: $text"
# The delivered configuration, with nothing but the address changed.
sed -i "s/127.0.0.1:8080/127.0.0.1:${port%%,*}/" "$configuration"
expect 4 "$(ormaagent --config "$configuration" --format csv topo devices | wc -l)"
kill "$simulator"
wait "$simulator"

# Code that is built against the packages.
read -r -a flags <<<"$(pkg-config --cflags --libs ii_ormaiac_emf)"
"$compiler" -std=c++14 "$here/consumer/main.cpp" -o "$work/consumer" "${flags[@]}"
expect $'fdn NE=12 5\ndevice yes' "$("$work/consumer")"

# Gone without a trace, but for the configuration, which goes last.
dpkg --remove "${names[@]}" >"$work/dpkg.log" 2>&1 || fail "$(cat "$work/dpkg.log")"
while read -r file; do
  [[ $file == "$configuration" || ! -f $file ]] || fail "$file is left behind"
done <"$work/files"
[[ -e $configuration ]] || fail "the configuration went with a removal"
mkdir -p /var/lib/ormaagent
dpkg --purge "${names[@]}" >"$work/dpkg.log" 2>&1 || fail "$(cat "$work/dpkg.log")"
[[ ! -e /etc/ormaagent && ! -e /var/lib/ormaagent ]] || fail "a purge leaves something behind"
