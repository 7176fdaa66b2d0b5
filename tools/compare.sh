# shellcheck shell=bash disable=SC2154,SC2034 # shared with desktop.sh and tools/bench
# Two builds measured in turns; sourced after desktop.sh. Each has a Wine prefix of its own, on one display.

compared_prefixes=()
warm_up=5

# compare FOLDER [ROUNDS]: this build and another one, a checkout or a folder of a build.
compare() {
  local bin rounds=${2:-50}
  bin=$(cd "$called_from" && bin_of "${1:-nothing}") || { echo "${1:-nothing} holds no build of the components" >&2; return 1; }
  rm -rf build/bench/compare
  start_side here build/win64/bin
  start_side there "$bin"
  in_turns "$rounds" > build/bench/compare/times
  say "this build (here) and $1 (there), medians of $rounds rounds in turns, in ms"
  print_comparison build/bench/compare/times
}

bin_of() {
  local folder
  for folder in "$1/build/win64/bin" "$1/bin" "$1"; do
    if [[ -f $folder/KRXDialogs.dll && -f $folder/KorvelRuntime.dll ]]; then
      realpath "$folder"
      return
    fi
  done
  return 1
}

# start_side SIDE BIN: starts the measuring program with the components of BIN; copies of all of it lie
# together, so that each side finds its own.
start_side() {
  local side=$1 root=build/bench/compare/$1 input output
  local bin=$root/build/win64/bin
  mkdir -p "$bin"
  cp build/win64/bin/{bench_dialogs,krxusers}.exe "$bin/"
  cp "$2"/{KRXDialogs,KorvelRuntime}.dll "$bin/"
  if [[ -f $2/krxusers.exe ]]; then cp "$2/krxusers.exe" "$bin/"; fi
  prefix_open=false # the other side's stays
  open_prefix "build/prefix-bench-$side"
  compared_prefixes+=("$WINEPREFIX")
  (cd "$root" && register win64)
  mkfifo "$root/in" "$root/out"
  "$wine64" "$bin/bench_dialogs.exe" --turns < "$root/in" > "$root/out" 2> /dev/null &
  exec {input}> "$root/in" {output}< "$root/out"
  inputs[$side]=$input
  outputs[$side]=$output
  answer "$side" ready
}
declare -A inputs outputs

# answer SIDE LAST: prints the lines of a side before its last one, which it has to say.
answer() {
  local line
  while IFS= read -r -u "${outputs[$1]}" line; do
    line=${line%$'\r'}
    if [[ $line == "$2" ]]; then return; fi
    echo "$1 $line"
  done
  echo "$1 has ended: $line" >&2
  return 1
}

# in_turns ROUNDS: prints SIDE DIALOG PAINTED RETURNED for each dialog and round behind the first ones. Who
# goes first changes with each round.
in_turns() {
  local round side times
  for ((round = -warm_up; round < $1; ++round)); do
    for side in $( ((round % 2)) && echo here there || echo there here); do
      echo >&"${inputs[$side]}"
      times=$(answer "$side" 'done') || return 1
      ((round < 0)) || echo "$times"
    done
  done
}

# median FILE SIDE DIALOG FIELD
median() {
  awk -v side="$2" -v dialog="$3" -v field="$4" '$1 == side && $2 == dialog { print $field }' "$1" | sort -g |
    awk '{ times[NR] = $1 } END { print times[int(NR / 2) + 1] }'
}

print_comparison() {
  local dialog
  printf '\n| %-22s | painted here | there | ratio | round trip here | there | ratio |\n' dialog
  printf '|---|---:|---:|---:|---:|---:|---:|\n'
  awk '!seen[$2]++ { print $2 }' "$1" | while read -r dialog; do
    awk -v dialog="$dialog" -v a="$(median "$1" here "$dialog" 3)" -v b="$(median "$1" there "$dialog" 3)" \
      -v c="$(median "$1" here "$dialog" 4)" -v d="$(median "$1" there "$dialog" 4)" 'BEGIN {
        printf "| %-22s | %12.2f | %5.2f | %5.3f | %15.2f | %5.2f | %5.3f |\n", dialog, a, b, a / b, c, d, c / d }'
  done
}

end_comparison() {
  local input prefix
  for input in "${inputs[@]}"; do
    exec {input}>&- # it ends by that
  done
  for prefix in "${compared_prefixes[@]}"; do
    WINEPREFIX=$prefix wineserver -k > /dev/null 2>&1 || true
  done
}
