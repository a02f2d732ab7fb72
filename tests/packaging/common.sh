# shellcheck shell=bash
# What the packaging tests share. Sourced, not run.
set -euo pipefail

fail() {
  printf 'FAILED: %s\n' "$*" >&2
  exit 1
}

# expect WANTED GIVEN
expect() {
  [[ $1 == "$2" ]] || fail "expected \"$1\", got \"$2\""
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
