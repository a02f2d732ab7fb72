#!/usr/bin/env bash
# installed_programs_test.sh PREFIX VERSION: simulator and agent work together from an installed
# tree, with the libraries and the error texts that lie beside them.
source "$(dirname "$0")/common.sh"

bin=$1/bin
expect "ormaagent $2" "$("$bin/ormaagent" --version)"
expect "ormasim $2" "$("$bin/ormasim" --version)"

"$bin/ormasim" generate --elements 3 --db "$work/network.db"
mkfifo "$work/ready"
"$bin/ormasim" serve --db "$work/network.db" --agent-config "$work/agent.json" >"$work/ready" &
simulator=$!
trap 'kill "$simulator"; wait "$simulator"; rm -rf "$work"' EXIT
read -r -t 60 ready <"$work/ready" || fail "the simulator did not become ready"
expect '{"httpPort": ' "${ready:0:13}"

agent() { "$bin/ormaagent" --config "$work/agent.json" --format csv "$@" | tr -d '\r'; }
expect 4 "$(agent topo devices | wc -l)"  # a heading and three devices
text=$(agent error-text 0x411800CC)
[[ $text != *unknown* ]] || fail "the installed error texts are not found: $text"
