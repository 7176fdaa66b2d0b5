# shellcheck shell=bash
# Shared pieces of the scripts; sourced from the root folder of the checkout.

export WINEDEBUG=${WINEDEBUG:--all}
# Wine names files and types letters in the character set of the locale; a bare machine has set none.
[[ $(locale charmap 2> /dev/null) == UTF-8 ]] || export LC_ALL=C.UTF-8

say() { printf '== %s\n' "$*"; }

as_root() {
  if [[ $(id -u) == 0 ]]; then
    env DEBIAN_FRONTEND=noninteractive "$@"
  else
    sudo DEBIAN_FRONTEND=noninteractive "$@"
  fi
}

# took START: prints the seconds since START, a value of $SECONDS.
took() { printf '   %s s\n' "$((SECONDS - $1))"; }

# show_progress: shows the lines of the input while they come, on a terminal as one line that changes,
# elsewhere one of them every ten seconds; none where $progress is false.
progress=true
show_progress() {
  local line shown=$SECONDS width=${COLUMNS:-80}
  while IFS= read -r line; do
    if ! $progress; then
      continue
    elif [[ -t 1 ]]; then
      printf '\r\e[K   %s' "${line:0:width-4}"
    elif ((SECONDS - shown >= 10)); then
      shown=$SECONDS
      printf '   %s\n' "$line"
    fi
  done
  if [[ -t 1 ]]; then printf '\r\e[K'; fi
}

# build PRESET [TARGET...]: configures when needed and builds.
build() {
  local preset=$1 log=build/log/$1.txt start=$SECONDS
  shift
  mkdir -p build/log
  say "building $preset"
  if ! { { [[ build/$preset/build.ninja -nt CMakePresets.json ]] || cmake --preset "$preset"; } &&
    cmake --build "build/$preset" ${1:+--target "$@"}; } 2>&1 | tee "$log" | show_progress; then
    grep -E -A8 'error|FAILED' "$log" | head -n 60 >&2 || tail -n 40 "$log" >&2
    echo "building $preset failed; all of it: $log" >&2
    return 1
  fi
  took "$start"
}
