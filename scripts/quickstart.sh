#!/usr/bin/env bash
# Shows the whole system at work: installs what a build needs, builds a release, makes a network of
# 200 elements, serves it on loopback, asks the agent about it and has it draw a picture
# (build/release/network.svg). Leaves nothing running.
#
#   scripts/quickstart.sh
#
# Exit status: 0 everything worked, 1 something failed, 2 packages are missing and may not be
# installed.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")
# shellcheck source=lib/console.sh
source "$here/lib/console.sh"
# shellcheck source=lib/packages.sh
source "$here/lib/packages.sh"

readonly elements=200 seed=7
readonly ready_seconds=60
readonly bin=$root/build/release/bin
readonly picture=$root/build/release/network.svg
work=
simulator=

clean_up() {
  if [[ -n $simulator ]]; then
    kill "$simulator" 2>/dev/null || true
    wait "$simulator" 2>/dev/null || true
  fi
  [[ -z $work ]] || rm -rf "$work"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

build() {
  cd "$root"
  cmake --preset release --log-level=WARNING || fail "the build could not be configured"
  cmake --build --preset release || fail "the build failed"
}

# Starts the simulator and waits for the line that says it is ready.
serve() {
  local ready
  mkfifo "$work/ready"
  "$bin/ormasim" serve --db "$work/network.db" --agent-config "$work/agent.json" \
    >"$work/ready" 2>"$work/simulator.log" &
  simulator=$!
  if ! read -r -t "$ready_seconds" ready <"$work/ready"; then
    cat "$work/simulator.log" >&2
    fail "the simulator did not become ready"
  fi
  printf 'The simulator is ready: %s\n' "$ready"
}

# agent WORD... runs one command against the simulator and passes its answer on. The agent's log,
# which goes to standard error, is shown only when the command fails.
agent() {
  if ! "$bin/ormaagent" --config "$work/agent.json" "$@" 2>"$work/agent.log"; then
    cat "$work/agent.log" >&2
    fail "ormaagent $* failed"
  fi
}

# show TEXT WORD... explains a command, names it and prints its answer.
show() {
  printf '\n%s\n  $ ormaagent %s\n' "$1" "${*:2}"
  agent "${@:2}" >"$work/answer"
  sed 's/^/  /' "$work/answer"
}

# The same for a long answer: its first lines, and how many there are.
show_first() {
  show "${@:2}" >"$work/shown"
  head -n "$(($1 + 3))" "$work/shown"
  printf '  ... %d lines in all\n' "$(wc -l <"$work/answer")"
}

# raise_alarms DEVICE COUNT: what goes wrong in the network while it is served.
raise_alarms() {
  printf '\n%s\n' "The simulator raises $2 alarms on device $1."
  "$bin/ormasim" raise --db "$work/network.db" --device "$1" --count "$2" ||
    fail "the alarms could not be raised"
}

# show_named_alarms TEXT DEVICE: its alarms, each with the name of its definition (by group and id)
# and the cause of its reason.
show_named_alarms() {
  printf '\n%s\n' "$1"
  agent --format csv alarm definitions >"$work/definitions.csv"
  agent --format csv alarm reasons >"$work/reasons.csv"
  agent --format csv alarm current --device "$2" >"$work/alarms.csv"
  awk -F, '
    { gsub(/["\r]/, "") }
    FNR == 1 { ++file; next }
    file == 1 { name[$1, $2] = $10 }
    file == 2 { cause[$1, $2, $3] = $4 }
    file == 3 { printf "  %s  %-24s  %s\n", $13, name[$7, $11], cause[$7, $11, $12] }
  ' "$work/definitions.csv" "$work/reasons.csv" "$work/alarms.csv"
}

step "Packages"
install_packages "${emf_quickstart_packages[@]}" || fail "the packages could not be installed"
echo "Everything that the build and the picture need is installed."

step "Build (build/release)"
build

step "A network of $elements elements"
work=$(mktemp -d "${TMPDIR:-/tmp}/emf-quickstart.XXXXXX")
"$bin/ormasim" generate --elements "$elements" --seed "$seed" --db "$work/network.db" ||
  fail "the network could not be generated"
serve

# The simulator's configuration leaves the subnet names off.
sed -i 's/"IsReportSubnet" *: *0/"IsReportSubnet": 1/' "$work/agent.json"

step "Asking the agent"
agent --format csv topo device 12 >"$work/device.csv"
name=$(sed -n '2s/.*,//p' "$work/device.csv" | tr -d '\r"')

show_first 12 "Every device of the network, read page by page over HTTP:" topo devices
show "One device, from the inventory database:" topo device 12
show "The software version that the database has for it:" topo version 12
show "Where it stands, outermost part first:" topo location 12
show "The device behind a node of the topology map:" topo device-of-node 12
show "The device cache, which fills itself over HTTP at the first miss:" cache device 12
show "The same cache, searched by name:" cache name "$name"
show "The distinguished name that goes with a device id:" res fdn 12
show "The node of a device on the topology map:" topo node 12
show_first 12 "The submaps as a tree, with how many submaps and devices each holds:" \
  topo tree --wait 30
show "The subnets that a device lies in, as the plug-in keeps them:" \
  topo submap-name 12 --wait 30
show_first 12 "Every link, with the status of both ends:" --format csv topo links
show_first 14 "Everything inside device 12, each part below what holds it:" res tree 12
show "From the element down to a port, by name:" res labels \
  NE=12 NE=12,FR=0 NE=12,FR=0,S=1 NE=12,FR=0,S=1,CP=1 NE=12,FR=0,S=1,SS=0,PP=1
# The compatible id of an element is its device id with bit 60 set.
iid=$(((1 << 60) + 12))
show "Where device 12 stands:" res location "$iid"
show "Who keeps it:" res maintenance "$iid"
show "What the database knows of it:" res attributes "$iid"
raise_alarms 12 8
show "The alarms that stand on device 12 now, fetched frame by frame from the fault server:" \
  alarm current --device 12
show_named_alarms "The same with name and cause, from the catalogue of definitions and reasons:" 12
show "A picture of all that, drawn by Graphviz:" topo draw --out "$picture"
show "The text of an error number, as other services of the agent get it:" error-text 0x411800CC

step "Done"
echo "The picture is $picture; any web browser shows it."
echo "The programs are $bin/ormaagent and $bin/ormasim; both explain themselves with --help."
