#!/usr/bin/env bash
# service_unit_test.sh UNIT PROGRAM: systemd takes the agent's unit, and finds it little exposed.
source "$(dirname "$0")/common.sh"

if ! command -v systemd-analyze >/dev/null; then
  echo "SKIPPED: there is no systemd-analyze"
  exit 77
fi
# Tenths of its scale from 0 to 100, "OK" being up to 50.
readonly most_exposed=15

unit=$work/ormaagent.service
sed "s,^ExecStart=ormaagent ,ExecStart=$2 ," "$1" >"$unit"
systemd-analyze verify --man=no "$unit" 2>"$work/verify.log" || fail "$(cat "$work/verify.log")"
! grep ormaagent.service "$work/verify.log" || fail "systemd has something to say about the unit"
systemd-analyze security --offline=yes --no-pager --threshold=$most_exposed "$unit" \
  >"$work/security.log" || fail "$(cat "$work/security.log")"

# What the program itself speaks of.
for line in Type=notify WatchdogSec=60 RestartPreventExitStatus=2; do
  grep -qx "$line" "$unit" || fail "the unit lacks $line"
done
"$2" --config "$(dirname "$1")/ormaagent.json" config check
