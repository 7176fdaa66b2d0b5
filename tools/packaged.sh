# shellcheck shell=bash
# Tests of what a plant downloads; sourced after results.sh, desktop.sh and lanes.sh.

# packages: makes it, looks at it, uses the archive as a plant does without registration, and installs.
packages() {
  local tasks
  check package ./package
  check package-check tools/package/check
  check installers-made tests/automation/install/packages x64 x86
  check installers-check tests/automation/install/check-packages x64 x86
  # shellcheck disable=SC2154 # set by desktop.sh
  tasks=("archive win64 $wine64" "installers win64 $wine64")
  if has_x86; then tasks+=("archive win32 $wine32" "installers win32 $wine32"); fi
  in_lanes 1 "${tasks[@]}"
}

# archive PRESET LOADER: the tests of use without registration on the files of the archive, unpacked by the check before.
archive() {
  local name width=x64 folder
  name=archive_tests-$(platform "$1")
  [[ $1 == win64 ]] || width=x86
  folder=build/package/unpacked/KRXDialogs-$(tools/package/version)-$width
  if [[ ! -d $folder ]]; then
    fail "$name: no archive is unpacked"
  elif stand_ready "$1" unregistered; then
    KRX_COMPONENTS=$(windows_path "$folder") run_tests "$name" "$2" "build/$1/bin/manifest_tests.exe"
  else
    fail "$name has no desktop to run on"
  fi
}

# installers PRESET LOADER: what a plant installs, on a machine that has never had it.
installers() {
  local name
  name=install_tests-$(platform "$1")
  WINEDLLOVERRIDES="$WINEDLLOVERRIDES;winemenubuilder.exe=d" # no menu but that of the prefix
  rm -rf "build/prefix-install-$(platform "$1")"
  # shellcheck disable=SC2034 # read by ./test
  at_hand=
  # shellcheck disable=SC2154 # set by desktop.sh
  ((${#desktop_processes[@]})) || open_display 1280x1024 || { fail "$name has no desktop to run on"; return 0; }
  open_prefix "build/prefix-install-$(platform "$1")" || { fail "$name has no prefix to run in"; return 0; }
  run_tests "$name" "$2" "build/$1/bin/install_tests.exe"
}
