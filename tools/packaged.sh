# shellcheck shell=bash
# Tests of what a plant downloads; sourced after results.sh, desktop.sh and lanes.sh.

# packages: makes it, looks at it, and uses the archive for x64 as a plant does without registration.
packages() {
  check package ./package
  check package-check tools/package/check
  # shellcheck disable=SC2154
  in_lanes 1 "archive win64 $wine64"
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
