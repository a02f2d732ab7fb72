# shellcheck shell=bash
# Messages of the scripts. Sourced, not run.

step() { printf '\n== %s\n' "$*"; }

fail() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}
