#!/usr/bin/env bash
# configuration_page_test.sh PROGRAM PAGE DOCUMENT: ormaagent.json(5) is sound, names every key that
# the document names, and its example is a configuration.
set -euo pipefail

fail() {
  printf 'FAILED: %s\n' "$*" >&2
  exit 1
}

program=$1
page=$2
document=$3

diff <("$program" --generate configuration-man) "$page" || fail "$page is older than the program"
if command -v mandoc >/dev/null; then
  findings=$(mandoc -T lint -W warning "$page" || true)
  [[ -z $findings ]] || fail "$findings"
fi
text=$(MANWIDTH=200 LC_ALL=C.UTF-8 man --warnings -l "$page" 2>&1 | col -b)
[[ $text != *warning:* ]] || fail "$text"

mapfile -t keys < <(sed -n 's/^| `\([A-Za-z.]*\)` |.*/\1/p' "$document")
((${#keys[@]} > 30)) || fail "the document has only ${#keys[@]} keys"
for key in "${keys[@]}"; do
  grep -Eq "^ +${key//./\\.} \(" <<<"$text" || fail "the page has no key $key"
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sed -n '/^EXAMPLES/,/^SEE ALSO/p' <<<"$text" | sed '1d;$d' >"$work/example.json"
"$program" --config "$work/example.json" config check || fail "the example is no configuration"
