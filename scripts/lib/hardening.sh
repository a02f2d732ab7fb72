# shellcheck shell=bash
# What of the hardening shows in a linked file. Sourced, not run.

# elf_files DIRECTORY prints the programs and shared libraries below it.
elf_files() {
  find "$1" -type f -exec sh -c \
    'for file; do [ "$(head -c 4 "$file" | tail -c 3)" = ELF ] && echo "$file"; done; :' sh {} +
}

# hardening_faults FILE prints what it lacks, a line for each; nothing when it lacks nothing.
hardening_faults() {
  local header segments dynamic symbols
  header=$(readelf --file-header --wide "$1")
  segments=$(readelf --program-headers --wide "$1")
  dynamic=$(readelf --dynamic --wide "$1")
  symbols=$(readelf --dyn-syms --wide "$1")
  [[ $header =~ Type:\ +DYN ]] || echo "$1: is linked for a fixed address"
  [[ $segments == *INTERP* && ! $dynamic =~ FLAGS_1.*PIE ]] && echo "$1: is no PIE"
  [[ $segments == *GNU_RELRO* ]] || echo "$1: has no RELRO segment"
  [[ $dynamic =~ \(FLAGS\).*BIND_NOW|FLAGS_1.*NOW ]] || echo "$1: binds lazily, so RELRO is not full"
  [[ $segments =~ GNU_STACK[^$'\n']*RWE ]] && echo "$1: has an executable stack"
  [[ $symbols == *__stack_chk_fail* ]] || echo "$1: has no stack protector"
  return 0
}
