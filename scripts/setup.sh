# What the commands of this repository share: packages, quiet steps, building a preset. Sourced by bash, not run.
# The caller sets `root` to the folder of the repository (absolute, without symbolic links).
# shellcheck shell=bash
# shellcheck disable=SC2154  # root comes from the caller

# Debian packages that the program and its tests are built with.
# shellcheck disable=SC2034  # for the caller
build_packages=(g++ cmake ninja-build libopenblas-dev libmumps-seq-dev libmetis-dev libgtest-dev libgmock-dev)

# fail STATUS TEXT...: says why a command of the repository cannot go on, and ends it.
fail() {
  local status=$1
  shift
  printf '%s\n' "$@" >&2
  exit "$status"
}

# step NAME COMMAND...: runs the command with its output in build/NAME.log, which is shown only when it fails.
step() {
  local log=$root/build/$1.log
  shift
  mkdir -p "$root/build"
  "$@" >"$log" 2>&1 </dev/null && return
  tail -n 60 "$log" >&2
  fail 70 "" "Failed: $*" "The lines above are the end of $log."
}

is_installed() {
  [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# need_packages NAME...: installs those that are missing, as root or with sudo; asks the network for nothing otherwise.
need_packages() {
  local missing=() package as_root=()
  command -v dpkg-query >/dev/null || return 0 # not Debian: the configuration tells what is missing
  for package; do
    is_installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null ||
      fail 70 "Missing packages, and no sudo to install them. As root: apt-get install ${missing[*]}"
    as_root=(sudo)
  fi
  printf 'Installing %s\n' "${missing[*]}"
  step apt-update "${as_root[@]}" apt-get update
  step apt-install "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install --yes --no-install-recommends "${missing[@]}"
}

# build PRESET [TARGET]: configures and builds a preset. A build folder that was moved with the repository is made anew.
build() {
  local preset=$1 fresh=() target=()
  [ $# -lt 2 ] || target=(--target "$2")
  cd "$root" || fail 70 "Cannot enter $root."
  grep -qsxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "build/$preset/CMakeCache.txt" || fresh=(--fresh)
  step "configure-$preset" cmake --preset "$preset" "${fresh[@]}"
  step "build-$preset" cmake --build --preset "$preset" --parallel "$(nproc)" "${target[@]}"
}
