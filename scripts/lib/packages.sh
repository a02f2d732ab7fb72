# shellcheck shell=bash disable=SC2034
# The Debian packages that the scripts need, and their installation. Sourced, not run.

emf_release_packages=(
  g++ cmake ninja-build pkg-config
  libace-dev libjsoncpp-dev
  libcurl4-openssl-dev libspdlog-dev libfmt-dev libsimdjson-dev
  libsoci-dev libboost-dev libpq-dev libsqlite3-dev
  libcli11-dev libcpp-httplib-dev libpugixml-dev libsystemd-dev
)
emf_quickstart_packages=("${emf_release_packages[@]}" graphviz)
emf_docs_packages=(doxygen graphviz python3)
emf_test_packages=(
  "${emf_release_packages[@]}"
  ccache clang libclang-rt-14-dev lld libgtest-dev libgmock-dev
  abigail-tools asn1c dpkg-dev lintian
  ca-certificates libssl-dev man-db mandoc openssl postgresql python3-pyasn1
  "${emf_docs_packages[@]}"
)
emf_coverage_packages=("${emf_test_packages[@]}" gcovr)
emf_package_packages=("${emf_release_packages[@]}" dpkg-dev lintian)
emf_bench_packages=("${emf_release_packages[@]}" ccache libbenchmark-dev asn1c libssl-dev)
emf_fuzz_packages=("${emf_release_packages[@]}" ccache clang libclang-rt-14-dev)
emf_lint_packages=("${emf_test_packages[@]}" libbenchmark-dev clang-format clang-tidy git)

# missing_packages NAME... prints those that are not installed.
missing_packages() {
  local name status
  for name in "$@"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null) || status=absent
    [[ $status == installed ]] || printf '%s\n' "$name"
  done
}

# install_packages NAME... installs what is missing, as root or with sudo. With neither it prints
# the command that somebody else has to run, and exits with 2.
install_packages() {
  local -a missing as_root=()
  mapfile -t missing < <(missing_packages "$@")
  ((${#missing[@]} > 0)) || return 0

  local command="apt-get install --yes --no-install-recommends ${missing[*]}"
  if ((EUID != 0)); then
    if ! may_use_sudo; then
      printf 'Packages are missing and this user may not install them. Run as root:\n  %s\n' \
        "$command" >&2
      exit 2
    fi
    as_root=(sudo)
  fi
  printf 'Installing: %s\n' "${missing[*]}"
  "${as_root[@]}" apt-get update --quiet=2
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install --quiet=2 --yes --no-install-recommends "${missing[@]}"
}

# Whether sudo works: without a password, or with somebody at the terminal to type it.
may_use_sudo() {
  command -v sudo >/dev/null || return 1
  [[ -t 0 ]] || sudo -n true 2>/dev/null
}
