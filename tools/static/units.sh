# shellcheck shell=bash
# The code as compilers see it, for checks that have to understand it; sourced by each after findings.sh. A unit stands
# for several files that are compiled alike, so that headers are read once for all of them.

files_of_unit=12
presets=(plain-native plain-win64)
units=build/static
windows_target=x86_64-w64-mingw32

# configure: makes the command lines of all presets, and the headers that are generated for them.
configure() {
  local preset log generated
  mkdir -p build/log "$units"
  for preset in "${presets[@]}"; do
    log=build/log/static-$preset.txt
    {
      cmake --preset "$preset" &&
        mapfile -t generated < <(ninja -C "build/$preset" -t targets all | sed -nE 's/^((.*\/)?idl\/[^/]+\.h): .*/\1/p') &&
        { ((!${#generated[@]})) || ninja -C "build/$preset" "${generated[@]}"; }
    } > "$log" 2>&1 || { tail -n 20 "$log"; echo "$preset cannot be configured; all of it: $log"; return 1; }
  done
}

# commands: how the files are compiled that a checkout brings, as lines "PRESET<tab>COMMAND<tab>FILE"; each once,
# natively where it is portable.
commands() {
  local preset
  for preset in "${presets[@]}"; do
    jq -r --arg preset "$preset" --arg here "$PWD/" '.[] | select(.file | startswith($here) and endswith(".cpp")) |
      [$preset, (.command | sub(" -o .*"; "")), (.file | ltrimstr($here))] | join("\t")' \
      "build/$preset/compile_commands.json"
  done | awk -F '\t' '$3 !~ /^build\// && !taken[$3]++'
}

# windows_includes: the folders of headers that the cross compiler has in mind, but for its own intrinsics.
windows_includes() {
  "$windows_target-g++-posix" -E -v -x c++ /dev/null 2>&1 | sed -n '/search starts here/,/^End/s/^ //p' | xargs realpath |
    grep -vE '/lib/.*/include(-fixed)?$' | sed 's/^/-isystem /'
}

# options PRESET: what clang needs to read what is meant for gcc, whose warnings are no part of this.
options() {
  echo "-Wno-everything -ferror-limit=0"
  [[ $1 != *win64 ]] || { echo "--target=$windows_target -nostdinc++" && windows_includes; }
}

# make_units NAME: makes units and their command lines out of the lines that `commands` prints, and prints their files.
make_units() {
  local preset folder lines
  lines=$(sort)
  for preset in "${presets[@]}"; do
    folder=$PWD/$units/$1-$preset
    rm -rf "$folder"
    mkdir -p "$folder"
    sed -n "s/^$preset\t//p" <<< "$lines" |
      awk -F '\t' -v most="$files_of_unit" -v here="$PWD" -v folder="$folder" -v added="$(options "$preset" | paste -sd ' ')" '
        $1 != command || ++files > most {
          command = $1; files = 1
          unit = sprintf("%s/%03d.cpp", folder, ++count)
          print command " " added "\t" unit
        }
        { printf "#include \"%s/%s\"\n", here, $2 > unit }' |
      jq -R -s --arg here "$PWD" 'split("\n") | map(select(. != "") | split("\t") |
        { directory: $here, file: .[1], command: "\(.[0]) -c \(.[1])" })' > "$folder/compile_commands.json"
    jq -r '.[].file' "$folder/compile_commands.json"
  done
}

# command_of UNIT: its command line.
command_of() { jq -r --arg unit "$1" '.[] | select(.file == $unit) | .command' "${1%/*}/compile_commands.json"; }

# files_of UNIT: the files that it stands for.
files_of() { sed -nE 's/^#include "(.*)"$/\1/p' "$1"; }
export -f command_of files_of

# for_each FUNCTION: calls an exported function with each line of the input, so many at a time as there are processors.
# What a call prints stays together.
for_each() {
  xargs -r -P "$(nproc)" -d '\n' -n 1 bash -euo pipefail -c \
    'said=$('"$1"' "$1"); [[ -z $said ]] || flock '"$PWD/$units"' printf "%s\n" "$said"' "$1"
}
