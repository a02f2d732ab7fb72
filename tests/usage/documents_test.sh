#!/usr/bin/env bash
# documents_test.sh PROGRAM SHARE: the program's manual page is sound, and page and completion name
# every command and option that --help does.
set -euo pipefail

fail() {
  printf 'FAILED: %s\n' "$*" >&2
  exit 1
}

program=$1
name=$(basename "$program")
page=$2/man/$name.1
script=$2/bash-completion/completions/$name

# What was built is what the program says.
diff <("$program" --generate man) "$page" || fail "$page is older than the program"
diff <("$program" --generate bash) "$script" || fail "$script is older than the program"

# Pages that are not installed are referred to, too.
if command -v mandoc >/dev/null; then
  findings=$(mandoc -T lint -W warning "$page" || true)
  [[ -z $findings ]] || fail "$findings"
fi
text=$(MANWIDTH=100 LC_ALL=C.UTF-8 man --warnings -l "$page" 2>&1 | col -b)
[[ $text != *warning:* ]] || fail "$text"

# help WORD... prints the help of a command.
help() { "$program" "$@" --help; }
commands_of() { help "$@" | sed -n '/^Subcommands:/,/^$/s/^  \([a-z][a-z-]*\).*/\1/p'; }
options_of() { help "$@" | grep -oE '^  (-[a-z],)?--[a-z-]+' | grep -oE -- '--[a-z-]+'; }

# proposals WORD...: what the completion has for the last word.
# shellcheck source=/dev/null
source "$script"
proposals() {
  # shellcheck disable=SC2034  # what bash hands to a completion
  local COMP_WORDS=("$name" "$@") COMP_CWORD=$#
  "_$name"
  printf '%s\n' "${COMPREPLY[@]}"
}

seen=0
# check WORD...: the command of these words and those below it.
check() {
  local option command
  seen=$((seen + 1))
  for option in $(options_of "$@"); do
    [[ $text == *"$option"* ]] || fail "the page of $name has no $option of '$*'"
    proposals "$@" -- >/dev/null
    grep -qxe "$option" <(proposals "$@" --) || fail "no completion of $option behind '$*'"
  done
  for command in $(commands_of "$@"); do
    grep -qx "$command" <(proposals "$@" "") || fail "no completion of $command behind '$*'"
    [[ -n $(commands_of "$@" "$command") || $text == *"${*:+$* }$command"* ]] ||
      fail "the page of $name has no '$* $command'"
    check "$@" "$command"
  done
}
check
((seen > 4)) || fail "only $seen commands were found in the help"
echo "$seen commands"
